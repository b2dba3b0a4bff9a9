onDialog('frmAsk', d => d.click('cmdNope'));
feldra.runCommand(feldra.commands()[0].cookie, 1);
