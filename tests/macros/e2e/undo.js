// Every command that changes the example part, each undone and redone. For
// each step NAME the part is saved before the command (NAME-before.fdoc, the
// saved state) and copies are written after it, after Undo and after Redo
// (NAME-after, NAME-undone, NAME-redone .fdoc); the test compares them byte
// for byte. Undo's and Redo's titles and the modified marker are checked here.
onDialog('frmWarning', d => d.click('cmdYes'));
onDialog('frmMarelonDataPage', d => {});

function check(name, what, ok) {
    if (!ok)
        throw new Error(`${name}: ${what}`);
}

function step(name, title, run) {
    feldra.save(`${name}-before.fdoc`);
    run();
    check(name, 'the command changed the part', feldra.modified());
    feldra.saveCopy(`${name}-after.fdoc`);
    check(name, `Undo names "${feldra.undoText()}"`, feldra.undoText() === title);
    feldra.undo();
    check(name, 'undone to the saved state, the part is unmodified', !feldra.modified());
    check(name, `Redo names "${feldra.redoText()}"`, feldra.redoText() === title);
    feldra.saveCopy(`${name}-undone.fdoc`);
    feldra.redo();
    check(name, 'redone, the part is modified', feldra.modified());
    feldra.saveCopy(`${name}-redone.fdoc`);
}

feldra.open('L5-part.fdoc');

step('tooldata', 'Tool Data', () => {
    onDialog('frmToolData', d => {
        d.control('cmbMachineName').select('L5 16-20');
        const grid = d.control('ToolGrid');
        let row = 1;
        while (row < grid.rowCount && grid.cell(row, 3) !== 'T06')
            ++row;
        grid.clickCell(row, 1);
        d.control('cmbHolders').select('GDF5102');
        for (const field of ['txtToolXShift', 'txtToolYShift', 'txtToolZShift'])
            d.setText(field, '0');
        d.click('cmdSetData');
        d.click('cmdExit');
    });
    feldra.runCommand('Tool Data');
});

step('autosync', 'Auto Sync', () => {
    onDialog('frmAutoSync', d => {
        const machines = d.control('cmbMachineName');
        machines.select(machines.entries.find(entry => entry.startsWith('L5')));
        d.click('cmdOK');
    });
    feldra.runCommand('Auto Sync');
});

// The step's title follows the add-in's caption into another language.
feldra.setLanguage(1031);
check('autosync', `Undo names "${feldra.undoText()}" in German`, feldra.undoText() === 'Auto-Sync');
feldra.setLanguage(1033);

// Auto Sync on its own result makes the synchronisations the part has: no step.
feldra.save('autosync-again.fdoc');
const before = feldra.undoText();
feldra.runCommand('Auto Sync');
check('autosync again', 'the part is unmodified', !feldra.modified());
check('autosync again', 'Undo names the step before', feldra.undoText() === before);

step('datapage-ok', 'Data Page', () => {
    feldra.runCommand('Data Page');
    const d = feldra.dialog('frmMarelonDataPage');
    d.control('txt815').text = '1.75';
    d.control('txt815').leave();
    d.click('cmdOK');
    check('datapage-ok', 'OK closed the page', !feldra.dialogs().includes('frmMarelonDataPage'));
});

// Load while the page is open replaces the part's setup entries; Cancel keeps them.
step('datapage-load', 'Data Page', () => {
    feldra.runCommand('Data Page');
    const d = feldra.dialog('frmMarelonDataPage');
    d.control('cmbMachineName').select('B2 12-20');
    d.control('cmbMachineSetup').select('Standard-12');
    d.click('cmdRefresh');
    d.click('cmdCancel');
});

// A new part from the template: the add-in's lathe work planes are a step.
feldra.answer('Discard');
feldra.openTemplate('swiss-lathe.fdt');
feldra.saveCopy('newdocument-before.fdoc');
feldra.newDocument('swiss-lathe.fdt');
check('newdocument', 'the new part is modified', feldra.modified());
feldra.saveCopy('newdocument-after.fdoc');
check('newdocument', `Undo names "${feldra.undoText()}"`, feldra.undoText() === 'New Document');
feldra.undo();
check('newdocument', 'undone, the new part is as made from the template', !feldra.modified());
feldra.saveCopy('newdocument-undone.fdoc');
feldra.redo();
feldra.saveCopy('newdocument-redone.fdoc');

feldra.print('undo: every step undone and redone');
