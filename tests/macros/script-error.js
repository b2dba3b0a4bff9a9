const fine = 1;

noSuchFunction(fine);
