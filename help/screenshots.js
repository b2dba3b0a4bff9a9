// Photographs the add-in's dialogs for the help, from the product itself:
//   feldra --macro help/screenshots.js examples/L5-part.fdoc
// help/take-screenshots runs it once per language and files the pictures.
// Every dialog is left by Cancel or No, and the part is not saved: the part
// and the holder library stay as they were. Tool Data is also photographed
// after Set Data (<form>-set.png). The pictures go to out/help-screenshots/<form>.png; the Data
// Page's to <form>-<tab>.png, its Machine Data tab on two more models to
// <form>-machine-<model>.png.
const out = 'out/help-screenshots';
const machine = 'L5 16-20';
const shot = d => d.screenshot(`${out}/${d.name}.png`);
const byId = id => feldra.commands().find(command => command.id === id);

function fill(d, fields) {
    for (const [name, text] of Object.entries(fields)) {
        d.control(name).text = text;
        d.control(name).leave();
    }
}

onDialog('frmNewHolder', d => {
    fill(d, {txtHolderName: 'GDB5190', txtHolderDesc: 'L5 16-20 back drilling holder 4, ER11',
             txtXShift: '48', txtZShift: '-50.8', txtYShift: '0', txtGear1: '1', txtGear2: '1'});
    shot(d);
    d.click('cmdCancel');
});
onDialog('frmEditHolder', d => {
    shot(d);
    d.click('cmdCancel');
});
onDialog('frmToolData', d => {
    d.control('cmbMachineName').select(machine);
    const grid = d.control('ToolGrid');
    for (let row = 1; row < grid.rowCount; ++row)
        if (grid.cell(row, 3) === 'T06') // a spot drill in the front drill sleeve
            grid.clickCell(row, 1);
    d.control('cmbHolders').select('GDF5102');
    shot(d);
    // The worked example of the help: Set Data with the drill's own Z share.
    d.setText('txtToolZShift', '0');
    d.click('cmdSetData');
    d.screenshot(`${out}/${d.name}-set.png`);
    d.click('cmdNew');
    d.click('cmdEdit');
    d.click('cmdExit');
});
onDialog('frmAutoSync', d => {
    const machines = d.control('cmbMachineName');
    machines.select(machines.entries.find(entry => entry.startsWith('L5')));
    shot(d);
    d.click('cmdCancel');
});
onDialog('frmWarning', d => {
    shot(d);
    d.click('cmdNo');
});

// The Data Page is modeless: it is driven once it is open. Its three tabs on
// the part as the part has them, then the Machine Data tab as two other models
// lay it out (keeping, marked, the values the L5 part gave the fields they
// do not set).
function photographDataPage() {
    const d = feldra.dialog('frmMarelonDataPage');
    if (!d)
        throw new Error('The Data Page did not open.');
    const tabs = d.control('MyTabs');
    ['part', 'machine', 'misc'].forEach((tab, index) => {
        tabs.listIndex = index;
        d.screenshot(`${out}/${d.name}-${tab}.png`);
    });
    tabs.listIndex = 1;
    for (const [model, file] of [['L4 25-32', 'L4'], ['M2-3 20-32', 'M2-3']]) {
        d.control('cmbMachineName').select(model);
        d.screenshot(`${out}/${d.name}-machine-${file}.png`);
    }
    d.click('cmdCancel');
}

for (const id of [2, 1, 6]) {
    const command = byId(id);
    if (!command)
        throw new Error('The Marelon add-in is not connected: register it first (see the README).');
    feldra.runCommand(command.cookie, id);
    if (id === 2)
        photographDataPage();
}
feldra.runHostCommand(3320);
