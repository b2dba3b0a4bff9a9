// A new document made from a template has no file name until saved with one.
const template = feldra.save('part.fdt');
feldra.newDocument(template);
if (feldra.documentFile() !== '') throw new Error('named ' + feldra.documentFile());
if (doc.Tools.Count !== 12) throw new Error('tools ' + doc.Tools.Count);
let refused = false;
try {
    feldra.save();
} catch (error) {
    refused = String(error).includes('no file name');
}
if (!refused) throw new Error('a new document was saved without a name');
feldra.save('new.fdoc');
