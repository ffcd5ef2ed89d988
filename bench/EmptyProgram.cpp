// The yardstick for a program's start.
int main() { return 0; }
