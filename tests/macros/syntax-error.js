const a = 1;
const = 2;
