// The Feldra demo, run headless by `make run` without a display:
//   feldra --macro examples/demo.js examples/L5-part.fdoc
// It uses the add-in on the example part as a user would: Tool Data sets the
// holder data of several tools (adding and editing a holder on the way), the
// Data Page is shown for three machines, Auto Sync synchronises the two
// spindles, every other command runs once; then it generates the NC code.
// Two Data Page rounds follow on new parts from the lathe template: an
// "L5 16-20" with hexagon bar stock and a magazine bar loader, an
// "M2-3 20-32" with tube stock and three NC heads. It writes the saved parts,
// the NC listings and screenshots to out/demo/, and prints what changed.
const out = 'out/demo';
const written = [];
if (!feldra.documentFile())
    feldra.open('examples/L5-part.fdoc');

// ---- the tools and holders the demo works with
// A Tool field that a tool's geometry does not give keeps the value of the
// tool chosen before (marked as carried over, and Set Data refuses it): the
// demo types each such tool's own value into it, which confirms it.
const machine = 'L5 16-20';
const toolHolders = [
    {tool: 'T06', holder: 'GDF5102', own: {txtToolZShift: '0'}},   // spot drill in the ER16 front drill sleeve
    {tool: 'T07', holder: 'GSE5102', own: {txtToolYShift: '0'}},   // cross drill on the 1:1.5 speed-up spindle
    {tool: 'T21', holder: 'GDB5101', own: {txtToolZShift: '0'}},   // back drill in back drilling holder 1
];
// The holder dialogs take shifts in the part's units, millimetres here.
const newHolder = {
    txtHolderName: 'GDB5190', txtHolderDesc: 'L5 16-20 back drilling holder 4, ER11',
    txtXShift: '48', txtZShift: '-50.8', txtYShift: '0', txtGear1: '1', txtGear2: '1',
};
const editedHolder = {txtHolderDesc: 'L5 16-20 back drilling holder 4, ER11, 1:2 speed-up', txtGear2: '2'};
const newHolderTool = {tool: 'T22', holder: newHolder.txtHolderName, own: {txtToolZShift: '0'}}; // back centre drill

function fill(dialog, fields) {
    for (const [name, text] of Object.entries(fields)) {
        const field = dialog.control(name);
        field.text = text;
        field.leave();
    }
}

function shot(dialog, name) {
    written.push(dialog.screenshot(`${out}/${name || dialog.name}.png`));
}

// The grid row (from 1) of a tool by its tool ID.
function toolRow(grid, toolId) {
    for (let row = 1; row < grid.rowCount; ++row)
        if (grid.cell(row, 3) === toolId)
            return row;
    throw new Error(`Tool ${toolId} is not in the Tool Data grid`);
}

// Chooses the tool and its holder, types the tool's own values, and checks
// that Set Data wrote them (it refuses a value carried over from another tool).
function setToolData(d, {tool: toolId, holder, own}) {
    const grid = d.control('ToolGrid');
    grid.clickCell(toolRow(grid, toolId), 1);
    d.control('cmbHolders').select(holder);
    for (const [field, value] of Object.entries(own))
        d.setText(field, value);
    const messages = feldra.messages().length;
    d.click('cmdSetData');
    if (feldra.messages().length > messages)
        throw new Error(`Set Data on ${toolId}: ${feldra.messages()[messages].prompt}`);
    print(`  ${toolId} <- ${holder} "${d.text('lblHolderDesc')}": Feldra X ${d.text('txtFeldraXShift')}` +
          ` Y ${d.text('txtFeldraYShift')} Z ${d.text('txtFeldraZShift')}, ${d.text('lblFeldraSpdlRot')},` +
          ` gear ${d.text('lblGear1')}:${d.text('lblGear2')}`);
}

// ---- dialogs: Tool Data and its holder dialogs, Auto Sync, any other
onDialog('frmNewHolder', d => {
    fill(d, newHolder);
    d.control('opReverse').checked = true;
    shot(d);
    d.click('cmdOK');
});
onDialog('frmEditHolder', d => {
    fill(d, editedHolder);
    shot(d);
    d.click('cmdOK');
});
onDialog('frmToolData', d => {
    d.control('cmbMachineName').select(machine);
    print(`Tool Data: machine ${machine}, ${d.control('cmbHolders').entries.length} holders`);
    for (const setting of toolHolders)
        setToolData(d, setting);
    d.click('cmdNew');
    d.click('cmdEdit');
    setToolData(d, newHolderTool);
    shot(d);
    // The demo holder leaves the library again, so that every run starts alike.
    d.control('cmbHolders').select(newHolder.txtHolderName);
    d.click('cmdDelete');
    d.click('cmdExit');
});
onDialog('frmAutoSync', d => {
    const machines = d.control('cmbMachineName');
    machines.select(machines.entries.find(entry => entry.startsWith('L5')));
    print(`Auto Sync: machine ${machines.entries[machines.listIndex]}, ` +
          `${d.control('lstOperations').entries.length} operations`);
    shot(d);
    d.click('cmdOK');
    if (d.visible)
        d.close();
});
// The Data Page is modeless: the demo drives it where it opens it.
onDialog('frmMarelonDataPage', d => {});
// Every other dialog is photographed, then answered: the NC-code warning goes
// on to the NC code, any other dialog is closed.
onDialog('*', d => {
    shot(d);
    if (d.name === 'frmWarning')
        d.click('cmdYes');
    else
        d.close();
});

// ---- the NC listing: its tools and its synchronisations
function ncListing(file) {
    const listing = feldra.runHostCommand(3320);
    if (listing === null) {
        print('NC code generation was cancelled by an add-in.');
        return '';
    }
    written.push(feldra.writeText(`${out}/${file}`, listing));
    return listing;
}

function section(listing, title) {
    const lines = listing.split('\n');
    const start = lines.indexOf(title);
    if (start < 0)
        return [];
    const end = lines.indexOf('', start);
    return lines.slice(start + 1, end < 0 ? undefined : end);
}

function toolLines(listing) {
    const tools = {};
    for (const line of section(listing, 'TOOLS')) {
        const m = line.match(/ID="([^"]*)" X=(\S+) Y=(\S+) Z=(\S+) SPINDLE=(\S+) GEAR=(\S+)/);
        if (m)
            tools[m[1]] = `X=${m[2]} Y=${m[3]} Z=${m[4]} ${m[5]} gear ${m[6]}`;
    }
    return tools;
}

function syncsByType(listing) {
    const counts = {};
    for (const line of section(listing, 'SYNCS')) {
        const m = line.match(/^\s+#\d+ (\(NO TYPE\)|\S+)/);
        if (m)
            counts[m[1]] = (counts[m[1]] || 0) + 1;
    }
    return Object.entries(counts).sort().map(([type, n]) => `${type} x${n}`).join(', ') || 'none';
}


// ---- the Data Page
const template = 'examples/swiss-lathe.fdt';
const tabs = ['part', 'machine', 'misc'];

function dataPage() {
    return feldra.dialog('frmMarelonDataPage');
}

function shootTabs(d, name) {
    for (let tab = 0; tab < tabs.length; ++tab) {
        d.control('MyTabs').listIndex = tab;
        shot(d, `datapage-${name}-${tabs[tab]}`);
    }
    d.control('MyTabs').listIndex = 0;
}

function slug(model) {
    return model.replace(/ /g, '_');
}

// Each model lays the Machine Data tab out its own way: captions, fixed values, lists.
function tourDataPage(d) {
    print(`Data Page on ${feldra.documentFile()}: machine ${d.text('cmbMachineName')}, setup ${d.text('cmbMachineSetup')}`);
    for (const model of ['A20', 'B2 12-20', 'C12-16', 'L5 16-20', 'L4 25-32', 'M2-3 20-32']) {
        d.control('cmbMachineName').select(model);
        print(`  ${model}: ${d.text('lbl990')} = ${d.text('txt990')}; ${d.text('lbl813')} = ${d.text('txt813')}` +
              `; ${d.text('lbl893')}: ${d.control('cmb893').entries.join('/') || '(off)'}`);
        if (['L5 16-20', 'L4 25-32', 'M2-3 20-32'].includes(model))
            shootTabs(d, slug(model));
    }
    d.click('cmdCancel');
}

// Fills fields as a user does: types and leaves, chooses, ticks; a function acts itself.
function fillFields(d, fields) {
    if (typeof fields === 'function')
        return fields(d);
    for (const [name, value] of Object.entries(fields)) {
        const control = d.control(name);
        if (control.type === 'QComboBox' && !control.entries.includes(value) && control.entries.length)
            throw new Error(`${name} has no entry ${value}`);
        if (control.type === 'QComboBox')
            control.select(value);
        else if (control.type === 'QRadioButton' || control.type === 'QCheckBox')
            control.checked = value;
        else {
            control.text = value;
            control.leave();
        }
    }
}

function dataPageSection(listing) {
    return section(listing, 'DATA PAGE').map(line => '    ' + line.trim()).join('\n');
}

// A new part from the lathe template: the Data Page opens by itself; the
// user fills it in tab by tab and presses OK.
function dataPageRound(name, model, tabValues) {
    feldra.newDocument(template);
    const d = dataPage();
    if (!d)
        throw new Error('The Data Page did not open on a new lathe part');
    print(`New part from ${template}: the Data Page opened with ${d.text('cmbMachineName')}`);
    fillFields(d, {cmbMachineName: model});
    for (const values of tabValues)
        fillFields(d, values);
    shootTabs(d, `${name}-filled`);
    d.click('cmdOK');
    for (const message of feldra.messages())
        print(`  Message "${message.title}": ${message.prompt}`);
    feldra.clearMessages();
    const setup = doc.MachineSetup;
    print(`  OK wrote: machine code ${setup.MachineCode}, stock code ${setup.StockCode}, 814 ${setup.Param814},` +
          ` bar loader "${setup.BarLoaderCommand}"`);
    const listing = ncListing(`${name}.nc.txt`);
    const heads = listing.split('\n').filter(line => line.startsWith('HEAD '));
    print(`  NC listing: ${heads.join(', ')}; data page of head 1:\n` + dataPageSection(listing));
    written.push(feldra.save(`${out}/${name}.fdoc`));
    written.push(feldra.screenshot(`${out}/${name}.png`));
    return feldra.documentFile();
}

function dataPageRounds() {
    const l5 = dataPageRound('L5-new', 'L5 16-20', [
        {StockTypeC: 'Polygon', IDCircle: true, Sides: '6', CircleDiameter: '14', BaseAngle: '0',
         StockLength: '2500', Zamount: '0.5', PartLength: '38', ProgramNumber: '4712', ProgramName: 'HEX-14'},
        {cmbGangHolder: 'GTF3812+GSE910(2) 6TURN+3ROTARY+3FACE', cmbFrontDrillHolder: 'Standard Holder',
         cmbBackDrillHolder: 'Free Tool', cmb893: 'With Basket', txt815: '1.5', txt816: '5', txt817: '2500',
         txt822: '0.04', txt824: '-1', txt818: '38', txt821: '43.7'},
        {optMagazine: true, cmbBarLoaderProgType: 'M Code', TxtChamferDistX: '0.5', TxtChamferDistZ: '0.3',
         TxtPullBackAmount: '2.25', CmbSpindleStop: 'NO', TxtSpindleRPM: '800', txtDwell: '1.5',
         txtStartupSpeed: '3000', CmbPolarMode: 'X and C'},
    ]);

    // The next new part starts from what the last OK kept.
    feldra.newDocument(template);
    let d = dataPage();
    print(`Next new part: ${d.text('cmbMachineName')}, gang holder ${d.text('cmbGangHolder')},` +
          ` bar loader ${d.control('optMagazine').checked ? 'magazine' : 'hydrostatic'} / ${d.text('cmbBarLoaderProgType')}`);
    d.click('cmdCancel');

    // The saved part shows what was written into it; the next new part is not kept.
    feldra.answer('Discard');
    feldra.open(l5);
    feldra.runCommand('Data Page');
    d = dataPage();
    print(`Reopened ${l5}: ${d.text('cmbMachineName')}, ${d.text('StockTypeC')} on ${d.control('IDCircle').checked ? 'ID' : 'OD'},` +
          ` ${d.text('Sides')} sides, 814 = ${d.text('txt814')}, line ${d.text('TxtChamferDistX')}/${d.text('TxtChamferDistZ')}`);
    // Load applies the machine's setup file to the part.
    d.control('MyTabs').listIndex = 1;
    d.control('cmbMachineSetup').select('Standard');
    d.click('cmdRefresh');
    print(`  Loaded the machine setup "${doc.MachineSetup.MachineSetupName}"; the Data Page shows` +
          ` ${d.control('cmbHeadComment').entries.length} heads`);
    d.click('cmdCancel');
    feldra.save();
    feldra.close();

    dataPageRound('M2-3-new', 'M2-3 20-32', [
        {cmbMachineSetup: 'Standard'},
        d => d.click('cmdRefresh'), // Load: the machine's setup with its three heads
        {StockTypeC: 'Tube', StockDiameter: '20', InsideDiameter: '12', StockLength: '3000', Zamount: '0.3',
         PartLength: '25', ProgramNumber: '2302', ProgramName: 'SLEEVE-20', NCCodeUnit: 'Metric'},
        {cmbHeadComment: 'Head-3', Comments: 'Turret: cross drilling'},
        {cmbGangHolder: 'GTF5216+GDF906 5TURN+1ROTARY+3FACE', cmbBackDrillHolder: 'Standard Holder',
         txt813: '22', txt815: '1', txt816: '9', txt817: '1800', txt822: '0.05', txt824: '-1', txt818: '25', txt821: '30'},
        {optHydrostatic: true, txtDwell: '1', txtStartupSpeed: '2500', chkToolBreak: true},
    ]);
    feldra.close();
}

const before = ncListing('L5-part.before.nc.txt');

// Edit > Undo takes the last step back, Edit > Redo replays it.
function undoAndRedo() {
    const step = feldra.undoText();
    const synced = feldra.get('Syncs.Count');
    feldra.undo();
    const undone = feldra.get('Syncs.Count');
    feldra.redo();
    print(`  Undo ${step}: ${synced} synchronisations -> ${undone}; Redo ${feldra.undoText()}: ` +
          `${feldra.get('Syncs.Count')} again`);
}

// ---- the add-in's commands, as a user runs them
const commands = feldra.commands();
if (commands.length === 0)
    print('No add-in is connected: register one with feldra --register-addin PATH. Only host commands run.');
for (const command of commands) {
    const name = command.caption || `${command.cookie}/${command.id}`;
    if (!command.enabled) {
        print(`Command "${name}": disabled, not run`);
        continue;
    }
    feldra.runCommand(command.cookie, command.id);
    print(`Command "${name}": run`);
    if (command.id === 2)
        tourDataPage(dataPage());
    if (name === 'Auto Sync')
        undoAndRedo();
}

// The Data Page in German: the add-in follows the host's language at once.
feldra.setLanguage(1031);
const germanDataPage = feldra.commands().find(command => command.id === 2);
feldra.runCommand(germanDataPage.cookie, germanDataPage.id);
shootTabs(dataPage(), 'de-L5_16-20');
dataPage().click('cmdCancel');
feldra.setLanguage(1033);

const simulation = feldra.simulate();
print(`Simulation: ${simulation.length} operations`);
for (const op of simulation)
    print(`  ${op.position} ${op.name}: Z2 ${op.z2Enabled ? 'on' : 'off'} at ${op.z2Position}, Z3 ${op.z3Enabled ? 'on' : 'off'}`);

const after = ncListing('L5-part.nc.txt');

// ---- what changed
print('Tools changed (X/Y/Z shifts, spindle direction, gear ratio):');
const toolsBefore = toolLines(before);
const toolsAfter = toolLines(after);
for (const [id, now] of Object.entries(toolsAfter))
    if (toolsBefore[id] !== now)
        print(`  ${id}: ${toolsBefore[id]}  ->  ${now}`);
print(`Syncs by type: before ${syncsByType(before)}; after ${syncsByType(after)}`);

for (const message of feldra.messages())
    print(`Message box "${message.title}": ${message.prompt}`);
for (const failed of feldra.failedCallbacks())
    print(`Failed callback ${failed.callback}: ${failed.description}`);

written.push(feldra.save(`${out}/L5-part.fdoc`));
written.push(feldra.screenshot(`${out}/feldra.png`));

// ---- the help viewer on the start page of the user guide and of the G-code reference
for (const [id, file] of [[5, 'help-marelon'], [4, 'help-gcode']]) {
    onDialog('feldraHelpViewer', d => { print(`  ${d.screenshot(`${out}/${file}.png`)}`); d.close(); });
    const command = commands.find(c => c.id === id);
    if (command && command.enabled)
        feldra.runCommand(command.cookie, id);
}

// The main window after the demo, in English and in German, at its default size.
for (const file of feldra.screenshots(`${out}/feldra-window.png`))
    print(`  ${file}`);

dataPageRounds();
print('Written:');
for (const file of new Set(written))
    print(`  ${file}`);
