feldra.runCommand('Never');
