// Auto Sync's operation list driven as a user drives it: a click chooses one
// entry, a Ctrl-click adds one or takes it out, a Shift-click adds the entries
// from the last click's on; the selection reads back, and a move keeps it.
// Cancel leaves the part as it was.
function same(actual, expected, what) {
    if (JSON.stringify(actual) !== JSON.stringify(expected))
        throw new Error(`${what}: ${JSON.stringify(actual)}, expected ${JSON.stringify(expected)}`);
}

onDialog('frmAutoSync', d => {
    const list = d.control('lstOperations');
    const names = list.entries;
    list.listIndex = 3;
    same(list.selection, [3], 'a click');
    list.ctrlClick(1);
    same(list.selection, [1, 3], 'a Ctrl-click adds');
    list.ctrlClick(3);
    same(list.selection, [1], 'a Ctrl-click takes out');
    list.shiftClick(4);
    same(list.selectedEntries, [names[1], names[3], names[4]], 'a Shift-click adds from the last click on');

    d.click('cmdUp');
    same(list.selection, [0, 2, 3], 'moved up');
    same(list.selectedEntries, [names[1], names[3], names[4]], 'the moved entries');
    list.ctrlClick(6);
    same(list.selection, [0, 2, 3, 6], 'a Ctrl-click after the move');
    list.listIndex = 5;
    same(list.selectedEntries, [list.entries[5]], 'a click after the move');
    d.click('cmdCancel');
});

const before = feldra.get('Operations.Item(2).Name');
feldra.runCommand('Auto Sync');
if (feldra.get('Operations.Item(2).Name') !== before)
    throw new Error('Cancel changed the order');
