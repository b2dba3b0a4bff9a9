// The Data Page round on a new part from the lathe template (swiss-lathe.fdt
// in the working folder): the Data Page opens by itself; "L5 16-20", hexagon
// bar stock on its inscribed circle, a magazine bar loader with the M code;
// OK. The part goes to datapage.fdoc, its listing to datapage.nc.txt. Then
// what the next new part and the reopened part show goes to next.txt and
// reopened.txt, one "control=text" a line.
onDialog('frmWarning', d => d.click('cmdYes'));
onDialog('frmMarelonDataPage', d => {});

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

function shown(d, file, names) {
    feldra.writeText(file, names.map(name => `${name}=${d.text(name)}`).join('\n') + '\n');
}

feldra.newDocument('swiss-lathe.fdt');
let d = feldra.dialog('frmMarelonDataPage');
for (const [name, value] of [
    ['cmbMachineName', 'L5 16-20'], ['StockTypeC', 'Polygon'], ['Sides', '6'], ['IDCircle', true],
    ['CircleDiameter', '14'], ['StockLength', '2500'], ['Zamount', '0.5'], ['PartLength', '38'],
    ['ProgramName', 'HEX-14'], ['ProgramNumber', '4712'], ['cmbGangHolder', 'GTF3613+GDF1107 5TURN+5ROTARY+3FACE'],
    ['cmbBackDrillHolder', 'Free Tool'], ['txt815', '1.5'], ['txt817', '2500'], ['txt822', '0.04'], ['txt824', '-1'],
    ['txt818', '38'], ['optMagazine', true], ['cmbBarLoaderProgType', 'M Code'], ['TxtChamferDistX', '0.5'],
    ['TxtChamferDistZ', '0.3'], ['TxtPullBackAmount', '2.25'], ['TxtSpindleRPM', '800']])
    set(d, name, value);
d.click('cmdOK');
if (feldra.dialogs().includes('frmMarelonDataPage'))
    throw new Error('OK refused: ' + JSON.stringify(feldra.messages()));
feldra.writeText('datapage.nc.txt', feldra.runHostCommand(3320));
feldra.save('datapage.fdoc');

const fields = ['cmbMachineName', 'cmbGangHolder', 'txt990', 'txt992', 'txt815', 'cmbBarLoaderProgType', 'StockTypeC',
                'Sides', 'txt814', 'TxtChamferDistX'];
feldra.newDocument('swiss-lathe.fdt');
d = feldra.dialog('frmMarelonDataPage');
shown(d, 'next.txt', fields);
d.click('cmdCancel');

feldra.answer('Discard'); // the next new part is not kept
feldra.open('datapage.fdoc');
feldra.runCommand('Data Page');
d = feldra.dialog('frmMarelonDataPage');
shown(d, 'reopened.txt', fields);
d.click('cmdCancel');
