// Saving under a new name and opening that file again keeps the values.
const file = feldra.save('saved.fdoc');
feldra.close();
feldra.open(file);
if (feldra.documentFile() !== file) throw new Error('file ' + feldra.documentFile());
if (doc.Tools.Count !== 12) throw new Error('tools after reopening');
