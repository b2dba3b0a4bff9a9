// A document with changes (here an add-in's pick) is never put away unasked:
// the save prompt is a message box the macro answers, and a run without an
// answer takes its first button, Save, instead of waiting for a user.
const copy = feldra.save('copy.fdoc'); // the example itself stays untouched
function change(key = 'F-GROOVE') { // the add-in writes the key ('' cancels: "cancelled")
    feldra.pick([key]);
    feldra.runCommand('Pick');
}
function expect(condition, what) {
    if (!condition) throw new Error(what + ': ' + JSON.stringify(feldra.messages()));
}

change();
feldra.answer('Cancel');
expect(!feldra.close() && feldra.documentFile().endsWith('copy.fdoc'), 'Cancel keeps the document');
expect(feldra.messages().length === 1 && feldra.messages()[0].buttons === 'YesNoCancel', 'one prompt');

feldra.answer('Discard');
expect(feldra.open(copy), 'Discard lets the document go');
expect(doc.MachineSetup.ProgramName !== 'F-GROOVE', 'the change is discarded');

change();
expect(feldra.open(copy), 'no answer: Save');
expect(doc.MachineSetup.ProgramName === 'F-GROOVE', 'the change was saved');

// A new document has no file name: Save cannot happen without a user to name it.
feldra.newDocument(copy);
change('');
try {
    feldra.close();
    expect(false, 'closed an unnamed document with changes');
} catch (error) {
    expect(String(error).includes('no file name'), String(error));
}
feldra.answer('Discard');
expect(feldra.close() && feldra.documentFile() === '', 'Discard closes it');
