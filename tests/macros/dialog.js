// A modal dialog driven through its controls; the message box answered Yes.
onDialog('frmAsk', d => {
    const value = d.control('txtValue');
    value.text = '12.5';
    value.leave();
    if (d.text('lblEcho') !== '12.5') throw new Error('lost focus did not run');
    d.control('cmbChoice').listIndex = 2;
    if (d.text('lblChoice') !== 'C') throw new Error('the list choice did not run');
    if (d.control('cmbChoice').entries.join() !== 'A,B,C') throw new Error('entries');
    d.control('chkFlag').checked = true;
    if (!d.control('chkFlag').checked) throw new Error('check box');
    feldra.answer('Yes');
    d.click('cmdOK');
});
feldra.runCommand('Ask');
if (feldra.messages()[0].prompt !== 'Keep 12.5?') throw new Error('message ' + feldra.messages()[0].prompt);
if (doc.MachineSetup.Param814 !== 12.5) throw new Error('param 814 ' + doc.MachineSetup.Param814);
