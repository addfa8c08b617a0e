#pragma once

#include <string>

// Services of the operating system that the standard library lacks.

/// Opens a library by its plain name, without folder, prefix and ending; null when there is none. It stays open.
void* LoadLibraryA(const char* name);
/// A function of a library; null when there is none, or no library.
void* GetProcAddress(void* library, const char* name);

/// The folder for what programs keep of their state on this machine, made if need be; empty when it can't be had.
std::string StateFolder();
