#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// What the fields of a column of bench data are.
enum class LoadKind { Numbers, Texts, QuotedTexts, Dates };

/// Reads delimited text of one kind of fields, which is known, on two threads, and gives the number of records: finds
/// separators, takes numbers and dates apart, looks texts up. Nothing is checked, rounded right or put in order; no
/// field holds a line break.
std::size_t RunLoadFloor(const std::string& path, LoadKind kind, std::size_t columns);
