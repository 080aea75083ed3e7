// tests/host/core/test_library.cpp: a library for the tests of dynamic loading to find.

extern "C" {

[[gnu::visibility("default")]] int test_library_answer();

int test_library_answer() { return 42; }
}
