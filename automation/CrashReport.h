#pragma once

#include <string>

struct FaultPointers;

/// The folder for dumps of the process, made if need be; empty when it can't be had.
[[nodiscard]] std::string ErrorFolder();

/// Has the report library, where one is installed, write a dump of the process into a folder, and logs that one was
/// made. Without the library nothing happens. Members that fail aren't changed by it.
void CrashReport(const std::string& folder, const FaultPointers& pointers, const char* what);
