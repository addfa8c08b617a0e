// A report library that tells what it is called with.

#include <string>

/// The two halves of where a structured exception happened.
struct Pointers {
    const void* Record;
    const void* Context;
};

extern "C" {

std::string Told;

void StackTrace(const void* /*process*/, int depth, const void* /*thread*/, const void* context,
                const void* /*reserved*/) {
    Told += "trace " + std::to_string(depth) + (context != nullptr ? " here; " : " nowhere; ");
}

void GenerateSilentErrorReport(const void* /*state*/, const char* folder, const Pointers* pointers, const char* what) {
    Told += "report " + std::string(folder) + (pointers->Record != nullptr ? " here " : " nowhere ") + what + "; ";
}
}
