// tests/device/wrong/signed_table.cpp: a table of functions in data, which no linker of ours can write for
// arm64e.

extern "C" {
int wrong_one(int number) { return number + 1; }
int wrong_two(int number) { return number + 2; }
extern int (*const wrong_table[2])(int);
int (*const wrong_table[2])(int) = {&wrong_one, &wrong_two};
}
