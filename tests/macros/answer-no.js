// Answering No keeps the modal dialog open: the macro is told, not hung.
onDialog('frmAsk', d => {
    d.setText('txtValue', '3');
    feldra.answer('No');
    d.click('cmdOK');
});
feldra.runCommand('Ask');
