// The yardstick for the start of a program.
int main() { return 0; }
