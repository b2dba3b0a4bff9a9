// Photographs the add-in's dialogs for the help, from the product itself:
//   feldra --macro help/screenshots.js examples/L5-part.fdoc
// help/take-screenshots runs it once per language and files the pictures.
// Every dialog is left by Cancel or No: the part and the holder library stay
// as they were. The pictures go to out/help-screenshots/<form>.png.
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

for (const id of [1, 6]) {
    const command = byId(id);
    if (!command)
        throw new Error('The Marelon add-in is not connected: register it first (see the README).');
    feldra.runCommand(command.cookie, id);
}
feldra.runHostCommand(3320);
