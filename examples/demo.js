// The Feldra demo, run headless by `make run` without a display:
//   feldra --macro examples/demo.js examples/L5-part.fdoc
// It uses the add-in on the example part as a user would: Tool Data sets the
// holder data of several tools (adding and editing a holder on the way), Auto
// Sync synchronises the two spindles, every other command runs once; then it
// generates the NC code and writes the saved part, the NC listings before and
// after, and screenshots to out/demo/, and prints what changed.
const out = 'out/demo';
const written = [];
if (!feldra.documentFile())
    feldra.open('examples/L5-part.fdoc');

// ---- the tools and holders the demo works with
const machine = 'L5 16-20';
const toolHolders = [
    {tool: 'T06', holder: 'GDF5102'},   // spot drill in the ER16 front drill sleeve
    {tool: 'T07', holder: 'GSE5102'},   // cross drill on the 1:1.5 speed-up spindle
    {tool: 'T21', holder: 'GDB5101'},   // back drill in back drilling holder 1
];
// The holder dialogs take shifts in the part's units, millimetres here.
const newHolder = {
    txtHolderName: 'GDB5190', txtHolderDesc: 'L5 16-20 back drilling holder 4, ER11',
    txtXShift: '48', txtZShift: '-50.8', txtYShift: '0', txtGear1: '1', txtGear2: '1',
};
const editedHolder = {txtHolderDesc: 'L5 16-20 back drilling holder 4, ER11, 1:2 speed-up', txtGear2: '2'};
const newHolderTool = 'T22';            // the back centre drill goes into the new holder

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

function setToolData(d, toolId, holder) {
    const grid = d.control('ToolGrid');
    grid.clickCell(toolRow(grid, toolId), 1);
    d.control('cmbHolders').select(holder);
    d.click('cmdSetData');
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
    for (const {tool, holder} of toolHolders)
        setToolData(d, tool, holder);
    d.click('cmdNew');
    d.click('cmdEdit');
    setToolData(d, newHolderTool, newHolder.txtHolderName);
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

const before = ncListing('L5-part.before.nc.txt');

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
}

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
print('Written:');
for (const file of new Set(written))
    print(`  ${file}`);

// ---- the help viewer on the start page of the user guide and of the G-code reference
for (const [id, file] of [[5, 'help-marelon'], [4, 'help-gcode']]) {
    onDialog('feldraHelpViewer', d => { print(`  ${d.screenshot(`${out}/${file}.png`)}`); d.close(); });
    const command = commands.find(c => c.id === id);
    if (command && command.enabled)
        feldra.runCommand(command.cookie, id);
}
