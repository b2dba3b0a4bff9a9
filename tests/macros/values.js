// Document values through the facade, by property and by path.
if (doc.Tools.Count !== 12) throw new Error('tools: ' + doc.Tools.Count);
if (doc.Tools.Item(1).ToolID !== feldra.get('Tools.Item(1).ToolID')) throw new Error('tool id');
if (typeof doc.MachineSetup.Param817 !== 'number') throw new Error('param');
if (doc.Operations.Item(1).Name !== 'Face') throw new Error('operation ' + doc.Operations.Item(1).Name);
