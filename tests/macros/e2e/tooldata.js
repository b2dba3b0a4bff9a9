// Tool Data as a user drives it: the L5 16-20 machine, then for each tool its
// grid row, a holder, no tool shift of its own, Set Data. The part is saved
// to tooldata.fdoc and its NC listing written to tooldata.nc.txt.
const settings = [
    {tool: 'T06', holder: 'GDF5102'},
    {tool: 'T07', holder: 'GSE5103'},
    {tool: 'T21', holder: 'GDB5101'},
];

onDialog('frmWarning', d => d.click('cmdYes'));
onDialog('frmToolData', d => {
    d.control('cmbMachineName').select('L5 16-20');
    const grid = d.control('ToolGrid');
    for (const {tool, holder} of settings) {
        let row = 1;
        while (row < grid.rowCount && grid.cell(row, 3) !== tool)
            ++row;
        grid.clickCell(row, 1);
        if (d.text('lblToolComment') === '') throw new Error(`tool ${tool} was not chosen`);
        d.control('cmbHolders').select(holder);
        for (const field of ['txtToolXShift', 'txtToolYShift', 'txtToolZShift'])
            d.setText(field, '0');
        d.click('cmdSetData');
    }
    d.click('cmdExit');
});

feldra.runCommand('Tool Data');
feldra.writeText('tooldata.nc.txt', feldra.runHostCommand(3320));
feldra.save('tooldata.fdoc');
