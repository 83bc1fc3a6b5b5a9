#pragma once
// The parameter section of a C3D file: groups of named parameters, each a scalar or
// an array of characters, bytes, 16-bit integers or floats.
#include "host/c3d/c3dnumbers.h"

#include <cstdint>
#include <string>
#include <vector>

namespace C3D {

// Data type codes as stored: the element size in bytes, negative for characters.
enum ParameterType : int { TypeChar = -1, TypeByte = 1, TypeInt16 = 2, TypeFloat = 4 };

struct Parameter {
    std::string group; // upper case, as names compare without case
    std::string name;  // upper case
    int type = 0;
    std::vector<int> dims;
    std::vector<double> numbers;      // byte, int16 and float parameters, in stored order
    std::vector<std::string> strings; // character parameters, each of dims[0] characters, untrimmed
};

class Parameters {
public:
    // Reads the records after the four-byte section header. Records that do not fit
    // the section, or have an unknown type, are skipped; the walk only ever moves
    // forward, so a corrupt link cannot loop.
    void parse(const uint8_t* section, size_t size, Processor processor);

    const Parameter* find(const std::string& group, const std::string& name) const;
    const std::vector<Parameter>& all() const { return params; }
    void add(const Parameter& p) { params.push_back(p); }

    // First value of a numeric parameter as a count: 16-bit integers read unsigned,
    // as writers use the whole range. False when absent, not numeric or not a
    // whole non-negative number.
    bool count(const std::string& group, const std::string& name, int64_t& value) const;
    // First value of a numeric parameter.
    bool number(const std::string& group, const std::string& name, double& value) const;
    // The strings of a character parameter, trimmed; empty when absent.
    std::vector<std::string> strings(const std::string& group, const std::string& name) const;
    // A 32-bit frame number stored as two 16-bit words, low word first.
    bool frameNumber32(const std::string& group, const std::string& name, int64_t& value) const;

private:
    std::vector<Parameter> params;
};

// Trims spaces, NULs and other control characters from both ends.
std::string trimmed(const std::string& s);
std::string upper(const std::string& s);

} // namespace C3D
