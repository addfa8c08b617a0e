// Read by the leak checker, where the tests are built with it: the system's font library keeps a little memory to the
// end of the program.
extern "C" const char* __lsan_default_suppressions();  // NOLINT(bugprone-reserved-identifier)

extern "C" const char* __lsan_default_suppressions() {  // NOLINT(bugprone-reserved-identifier)
    return "leak:libfontconfig\n";
}
