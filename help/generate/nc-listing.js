// Writes the NC listing of the part it runs on, for the listing excerpts of
// the help:
//   feldra --macro help/generate/nc-listing.js examples/L5-part.fdoc
// On the L5 part Tool Data first sets the holder of the spot drill T06 (the
// worked example of the Tool Data topic, as help/screenshots.js shows it).
// Auto Sync then rebuilds the part's synchronisations from the operations in
// their order (the machine of the part's series in its list), and Feldra
// generates the NC code (Yes to the warning); the listing goes to
// <part>.nc in the current folder, in German to <part>.de.nc. The part is not
// saved.
const file = feldra.documentFile();
const part = file.substring(file.lastIndexOf('/') + 1).replace(/\.fdoc$/, '');
const series = part.split('-')[0]; // "L5" of "L5-part"

onDialog('frmAutoSync', d => {
    const machines = d.control('cmbMachineName');
    const machine = machines.entries.find(entry => entry.startsWith(series));
    if (!machine)
        throw new Error(`Auto Sync lists no machine of the series ${series}.`);
    machines.select(machine);
    d.click('cmdOK');
    if (d.visible)
        throw new Error(`Auto Sync did not accept the operations of ${part}.`);
});
onDialog('frmWarning', d => d.click('cmdYes'));
onDialog('frmToolData', d => {
    d.control('cmbMachineName').select('L5 16-20');
    const grid = d.control('ToolGrid');
    for (let row = 1; row < grid.rowCount; ++row)
        if (grid.cell(row, 3) === 'T06')
            grid.clickCell(row, 1);
    d.control('cmbHolders').select('GDF5102');
    d.setText('txtToolZShift', '0'); // the drill's own Z share: its geometry gives none
    d.click('cmdSetData');
    if (feldra.messages().length > 0)
        throw new Error(`Set Data on T06: ${feldra.messages()[0].prompt}`);
    d.click('cmdExit');
});

if (series === 'L5')
    feldra.runCommand('Tool Data');
feldra.runCommand('Auto Sync');
if (feldra.messages().length > 0)
    throw new Error(`Auto Sync on ${part}: ${feldra.messages()[0].prompt}`);
const listing = feldra.runHostCommand(3320);
if (listing === null)
    throw new Error(`No NC code was generated for ${part}.`);
feldra.writeText(`${part}.nc`, listing);
// The same listing in German, for the German help: the listing's own words
// follow the language, line for line.
feldra.setLanguage(1031);
const german = feldra.runHostCommand(3320);
feldra.setLanguage(1033);
if (german === null)
    throw new Error(`No German NC code was generated for ${part}.`);
feldra.writeText(`${part}.de.nc`, german);
