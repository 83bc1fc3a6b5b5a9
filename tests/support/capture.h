#pragma once
// Captures what a block of code writes to std::cout, for exact comparison.
#include <iostream>
#include <sstream>
#include <string>

class StdoutCapture {
public:
    StdoutCapture() : old(std::cout.rdbuf(buffer.rdbuf())) {}
    ~StdoutCapture() { std::cout.rdbuf(old); }
    StdoutCapture(const StdoutCapture&) = delete;
    StdoutCapture& operator=(const StdoutCapture&) = delete;
    std::string text() const { return buffer.str(); }

private:
    std::ostringstream buffer;
    std::streambuf* old;
};
