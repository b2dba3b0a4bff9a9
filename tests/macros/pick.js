// Scripted object picks: the queued keys answer the add-in's picks in order.
feldra.pick(['F-GROOVE', '']);
feldra.runCommand('Pick');
if (doc.MachineSetup.ProgramName !== 'F-GROOVE') throw new Error('picked ' + doc.MachineSetup.ProgramName);
feldra.runCommand('Pick');
if (doc.MachineSetup.ProgramName !== 'cancelled') throw new Error('cancel ' + doc.MachineSetup.ProgramName);
