#include "host/c3d/c3dparameters.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <map>

namespace C3D {

std::string trimmed(const std::string& s)
{
    auto pad = [](char c) { return static_cast<unsigned char>(c) <= ' '; };
    size_t b = 0, e = s.size();
    while (b < e && pad(s[b]))
        ++b;
    while (e > b && pad(s[e - 1]))
        --e;
    return s.substr(b, e - b);
}

std::string upper(const std::string& s)
{
    std::string u = s;
    for (char& c : u)
        c = char(std::toupper(static_cast<unsigned char>(c)));
    return u;
}

namespace {

// Reads one parameter's type, dimensions and data from body[0, size). False when
// they do not fit.
bool readParameterBody(const uint8_t* body, size_t size, Processor processor, Parameter& p)
{
    if (size < 2)
        return false;
    p.type = int(int8_t(body[0]));
    if (p.type != TypeChar && p.type != TypeByte && p.type != TypeInt16 && p.type != TypeFloat)
        return false;
    const int ndims = body[1];
    if (ndims > 7 || size < size_t(2 + ndims))
        return false;
    size_t elements = 1;
    for (int i = 0; i < ndims; ++i) {
        p.dims.push_back(body[2 + i]);
        elements *= body[2 + i];
    }
    const size_t width = size_t(std::abs(p.type));
    const uint8_t* data = body + 2 + ndims;
    if (elements * width > size - 2 - ndims)
        return false;
    if (p.type == TypeChar) {
        const size_t length = ndims == 0 ? 1 : size_t(p.dims[0]);
        const size_t count = length == 0 ? 0 : elements / length;
        for (size_t i = 0; i < count; ++i)
            p.strings.emplace_back(reinterpret_cast<const char*>(data + i * length), length);
        return true;
    }
    p.numbers.reserve(elements);
    for (size_t i = 0; i < elements; ++i) {
        const uint8_t* v = data + i * width;
        if (p.type == TypeByte)
            p.numbers.push_back(v[0]);
        else if (p.type == TypeInt16)
            p.numbers.push_back(readInt16(v, processor));
        else
            p.numbers.push_back(readFloat(v, processor));
    }
    return true;
}

} // namespace

void Parameters::parse(const uint8_t* section, size_t size, Processor processor)
{
    std::map<int, std::string> groupNames;
    std::vector<std::pair<int, Parameter>> pending;
    size_t pos = 4;
    while (pos + 2 <= size) {
        const int nameLength = std::abs(int(int8_t(section[pos])));
        const int id = int(int8_t(section[pos + 1]));
        if (nameLength == 0 || id == 0)
            break;
        const size_t linkAt = pos + 2 + size_t(nameLength);
        if (linkAt + 2 > size)
            break;
        const std::string name = upper(trimmed(std::string(reinterpret_cast<const char*>(section + pos + 2), size_t(nameLength))));
        const int link = readInt16(section + linkAt, processor);
        // The last record may link past the end; its extent then is the section's.
        const size_t end = link > 0 ? std::min(size, linkAt + size_t(link)) : size;
        const size_t body = linkAt + 2;
        if (id < 0) {
            groupNames.emplace(-id, name);
        } else if (body <= end) {
            Parameter p;
            p.name = name;
            if (readParameterBody(section + body, end - body, processor, p))
                pending.emplace_back(id, std::move(p));
        }
        if (link <= 0)
            break;
        pos = linkAt + size_t(link);
    }
    for (auto& entry : pending) {
        const auto g = groupNames.find(entry.first);
        if (g == groupNames.end())
            continue;
        entry.second.group = g->second;
        params.push_back(std::move(entry.second));
    }
}

const Parameter* Parameters::find(const std::string& group, const std::string& name) const
{
    const std::string g = upper(group), n = upper(name);
    for (const Parameter& p : params)
        if (p.group == g && p.name == n)
            return &p;
    return nullptr;
}

bool Parameters::number(const std::string& group, const std::string& name, double& value) const
{
    const Parameter* p = find(group, name);
    if (!p || p->numbers.empty())
        return false;
    value = p->numbers.front();
    return true;
}

bool Parameters::count(const std::string& group, const std::string& name, int64_t& value) const
{
    const Parameter* p = find(group, name);
    if (!p || p->numbers.empty())
        return false;
    double v = p->numbers.front();
    if (p->type == TypeInt16 && v < 0)
        v += 65536.0;
    if (!std::isfinite(v) || v < 0 || v > 4294967295.0 || v != std::floor(v))
        return false;
    value = int64_t(v);
    return true;
}

std::vector<std::string> Parameters::strings(const std::string& group, const std::string& name) const
{
    std::vector<std::string> out;
    const Parameter* p = find(group, name);
    if (!p)
        return out;
    for (const std::string& s : p->strings)
        out.push_back(trimmed(s));
    return out;
}

bool Parameters::frameNumber32(const std::string& group, const std::string& name, int64_t& value) const
{
    const Parameter* p = find(group, name);
    if (!p || p->type != TypeInt16 || p->numbers.size() < 2)
        return false;
    const auto word = [](double v) { return int64_t(v < 0 ? v + 65536.0 : v); };
    value = word(p->numbers[0]) | word(p->numbers[1]) << 16;
    return true;
}

} // namespace C3D
