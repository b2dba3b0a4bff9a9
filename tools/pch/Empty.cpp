// The source of the targets that only carry the precompiled headers.
int main() { return 0; }
