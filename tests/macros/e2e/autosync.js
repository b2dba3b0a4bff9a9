// Auto Sync on the L5 machine, OK; the part is saved to autosync.fdoc and its
// NC listing written to autosync.nc.txt.
onDialog('frmWarning', d => d.click('cmdYes'));
onDialog('frmAutoSync', d => {
    const machines = d.control('cmbMachineName');
    machines.select(machines.entries.find(entry => entry.startsWith('L5')));
    d.click('cmdOK');
    if (d.visible) throw new Error('Auto Sync refused: ' + JSON.stringify(feldra.messages()));
});

feldra.runCommand('Auto Sync');
feldra.writeText('autosync.nc.txt', feldra.runHostCommand(3320));
feldra.save('autosync.fdoc');
