// NC code generation returns the listing; the simulation one row per operation.
const listing = feldra.runHostCommand(3320);
if (listing.indexOf('PROGRAM') < 0) throw new Error('listing');
const rows = feldra.simulate();
if (rows.length !== doc.Operations.Count) throw new Error('rows ' + rows.length);
