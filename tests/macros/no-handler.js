feldra.runCommand('Ask');
