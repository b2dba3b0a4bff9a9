// The Feldra demo, run headless by `make run` without a display:
//   feldra --macro examples/demo.js examples/L5-part.fdoc
// It runs every add-in command on the example part, generates the NC code and
// writes the saved part, the NC listing and screenshots to out/demo/.
const out = 'out/demo';
const written = [];
if (!feldra.documentFile())
    feldra.open('examples/L5-part.fdoc');

// Every dialog a command shows is photographed, then answered: the NC-code
// warning goes on to the NC code, any other dialog is closed.
onDialog('*', dialog => {
    written.push(dialog.screenshot(`${out}/${dialog.name}.png`));
    if (dialog.name === 'frmWarning')
        dialog.click('cmdYes');
    else
        dialog.close();
});

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

const listing = feldra.runHostCommand(3320);
if (listing === null)
    print('NC code generation was cancelled by an add-in.');
else
    written.push(feldra.writeText(`${out}/L5-part.nc.txt`, listing));

for (const message of feldra.messages())
    print(`Message box "${message.title}": ${message.prompt}`);
for (const failed of feldra.failedCallbacks())
    print(`Failed callback ${failed.callback}: ${failed.description}`);

written.push(feldra.save(`${out}/L5-part.fdoc`));
written.push(feldra.screenshot(`${out}/feldra.png`));
print('Written:');
for (const file of written)
    print(`  ${file}`);
