#include "host/c3d/c3dlabels.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

namespace C3D {

std::vector<std::string> continuedStrings(const Parameters& params, const std::string& group,
                                          const std::string& name)
{
    std::vector<std::string> out = params.strings(group, name);
    for (int i = 2; params.find(group, name + std::to_string(i)); ++i) {
        const std::vector<std::string> more = params.strings(group, name + std::to_string(i));
        out.insert(out.end(), more.begin(), more.end());
    }
    return out;
}

namespace {

// (list parameter, kind) pairs: the file's own table when it has one.
std::vector<std::pair<std::string, std::string>> typeGroups(const Parameters& params)
{
    std::vector<std::pair<std::string, std::string>> groups;
    const std::vector<std::string> table = params.strings("POINT", "TYPE_GROUPS");
    for (size_t i = 0; i + 1 < table.size(); i += 2)
        if (!table[i].empty() && !table[i + 1].empty())
            groups.emplace_back(upper(table[i]), upper(table[i + 1]));
    if (groups.empty())
        groups = {{"ANGLES", "ANGLE"},   {"FORCES", "FORCE"},     {"MOMENTS", "MOMENT"},
                  {"POWERS", "POWER"},   {"SCALARS", "SCALAR"},   {"REACTIONS", "REACTION"}};
    return groups;
}

std::string lower(std::string s)
{
    for (char& c : s)
        if (c >= 'A' && c <= 'Z')
            c = char(c - 'A' + 'a');
    return s;
}

} // namespace

std::vector<PointDescription> describePoints(const Parameters& params, int pointCount)
{
    const std::vector<std::string> labels = continuedStrings(params, "POINT", "LABELS");
    const std::vector<std::string> unitsParameter = params.strings("POINT", "UNITS");
    const std::string markerUnits = unitsParameter.empty() ? std::string() : unitsParameter.front();

    // Label -> (kind, units); the first list that names a label decides.
    std::map<std::string, std::pair<std::string, std::string>> kinds;
    for (const auto& g : typeGroups(params)) {
        const std::vector<std::string> unitList = params.strings("POINT", g.second + "_UNITS");
        const std::string units = unitList.empty() ? std::string() : unitList.front();
        for (const std::string& label : continuedStrings(params, "POINT", g.first))
            if (!label.empty())
                kinds.emplace(label, std::make_pair(lower(g.second), units));
    }

    std::vector<PointDescription> out(size_t(std::max(0, pointCount)));
    std::set<std::string> taken;
    for (int i = 0; i < pointCount; ++i) {
        const std::string label = size_t(i) < labels.size() ? labels[size_t(i)] : std::string();
        const std::string base = label.empty() ? "P" + std::to_string(i + 1) : label;
        std::string name = base;
        for (int n = 2; taken.count(name); ++n)
            name = base + "#" + std::to_string(n);
        taken.insert(name);
        PointDescription& d = out[size_t(i)];
        d.name = name;
        const auto k = kinds.find(label);
        if (k != kinds.end()) {
            d.kind = k->second.first;
            d.units = k->second.second;
        } else {
            d.kind = "marker";
            d.units = markerUnits;
        }
    }
    return out;
}

std::string pointOptions(const PointDescription& d)
{
    std::string options = "kind=" + d.kind;
    if (!d.units.empty())
        options += ";units=" + d.units;
    return options;
}

} // namespace C3D
