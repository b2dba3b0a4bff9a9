print(doc.MachineSetup.Param8144);
