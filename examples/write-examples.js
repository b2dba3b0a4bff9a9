// Writes the Data Page of the example parts through the add-in, as a user
// fills it in, and saves each part in place:
//   feldra --macro examples/write-examples.js
// The parts' operations, tools and stock profiles are the parts' own; what
// the Data Page writes (machine setup parameters, heads, stock, bar loader)
// comes from here, so that it is what the add-in writes.
onDialog('frmMarelonDataPage', d => {}); // modeless: driven below
onDialog('*', d => d.close());

// Sets a field as a user does: chooses a list entry, ticks an option, or types and leaves.
function set(d, name, value) {
    const control = d.control(name);
    if (control.type === 'QComboBox')
        control.select(value);
    else if (typeof value === 'boolean')
        control.checked = value;
    else {
        control.text = value;
        control.leave();
    }
}

function writeDataPage(part, model, values, updates) {
    feldra.open(part);
    feldra.runCommand('Data Page');
    const d = feldra.dialog('frmMarelonDataPage');
    set(d, 'cmbMachineName', model);
    for (const [name, value] of values)
        set(d, name, value);
    for (const button of updates)
        d.click(button);
    d.click('cmdOK');
    for (const message of feldra.messages())
        throw new Error(`${part}: ${message.prompt}`);
    print(`${part}: ${model}, ${doc.MachineSetup.BarLoaderCommand}`);
    feldra.save(part);
    feldra.close();
}

const updates = ['CmdUpd816', 'CmdUpd818', 'CmdUpdColletExt', 'CmdUpd821'];

// The bar-change line is stored whatever the loader: its fields are filled
// under "M Code" before a sub-program loader is chosen.
const line = (x, z, w, rpm) => [['optMagazine', true], ['cmbBarLoaderProgType', 'M Code'],
    ['TxtChamferDistX', x], ['TxtChamferDistZ', z], ['TxtPullBackAmount', w], ['CmbSpindleStop', 'NO'],
    ['TxtSpindleRPM', rpm]];

writeDataPage('examples/L5-part.fdoc', 'L5 16-20', Object.entries({
    StockTypeC: 'Bar', StockDiameter: '16', StockLength: '2500', Zamount: '0.5', PartLength: '38.2',
    ProgramNumber: '4711', ProgramName: 'L5-PART', NCCodeUnit: 'Metric',
    cmbGangHolder: 'GTF3812+GSE910(2) 6TURN+3ROTARY+3FACE', cmbFrontDrillHolder: 'Standard Holder',
    cmbBackDrillHolder: 'Standard Holder', cmb893: 'With Basket',
    txt815: '1.5', txt817: '2500', txt822: '0.04', txt824: '-0.5', txt819: '1',
    txtDwell: '1.5', txtStartupSpeed: '3000', CmbPolarMode: 'X and C',
}).concat(line('0.5', '0.3', '2.25', '800'), [['cmbBarLoaderProgType', 'Sub Program'], ['txtBarLoaderSubNum', '9000']]),
updates);

writeDataPage('examples/M2-3-part.fdoc', 'M2-3 20-32', line('0.02', '0.01', '0.09', '600').concat(Object.entries({
    StockTypeC: 'Bar', StockDiameter: '0.75', StockLength: '144', Zamount: '0.02', PartLength: '2.25',
    ProgramNumber: '2301', ProgramName: 'STEM-34', NCCodeUnit: 'Inch',
    cmbGangHolder: 'GTF5216 5TURN+4ROTARY', cmbBackDrillHolder: 'Standard Holder', cmb893: 'Standard',
    txt813: '22', txt815: '0.04', txt817: '1800', txt822: '0.0015', txt824: '-0.02', txt819: '1',
    optHydrostatic: true, txtDwell: '1', txtStartupSpeed: '2500', chkToolBreak: true, CmbPolarMode: 'X and Y',
})), updates);

writeDataPage('examples/L4-part.fdoc', 'L4 25-32', Object.entries({
    StockTypeC: 'Bar', StockDiameter: '32', StockLength: '3000', Zamount: '0.5', PartLength: '24',
    ProgramNumber: '1032', ProgramName: 'BUSHING-32', NCCodeUnit: 'Metric',
    cmb893: 'No', cmbBackSpdlExt: 'Yes',
    txt815: '2', txt817: '1600', txt822: '0.05', txt824: '-1', txt819: '1', txtDwell: '2', txtStartupSpeed: '2000',
}).concat(line('1', '0.5', '3', '500')), updates);
