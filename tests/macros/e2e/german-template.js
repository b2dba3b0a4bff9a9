// In German: the add-in's captions follow the switch at once, and a new
// document from the lathe template gets the five lathe work planes once, in
// German, in place of the standard planes; the Data Page it opens is closed.
onDialog('*', d => d.close());
function expect(condition, what) {
    if (!condition) throw new Error(what);
}
const captions = () => feldra.commands().map(command => command.caption);
feldra.setLanguage(1033); // whatever the user chose last
expect(captions().includes('Tool Data'), 'English captions: ' + captions());
feldra.setLanguage(1031);
expect(captions().includes('Werkzeugdaten') && !captions().includes('Tool Data'), 'German captions: ' + captions());

feldra.newDocument('swiss-lathe.fdt');
const planes = [];
for (let i = 1; i <= doc.WorkPlanes.Count; ++i)
    planes.push(doc.WorkPlanes.Item(i).Name);
expect(planes.join() === 'Drehen,Kamm quer,Stirnseite hinten,Revolver quer,Stirnseite vorn', 'planes: ' + planes);
expect(feldra.failedCallbacks().length === 0, JSON.stringify(feldra.failedCallbacks()));
// The add-in's planes are changes of the new document.
feldra.answer('Discard');
expect(feldra.close() && feldra.messages().length === 1, 'asked before closing: ' + JSON.stringify(feldra.messages()));
