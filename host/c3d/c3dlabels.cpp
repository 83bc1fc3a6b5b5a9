#include "host/c3d/c3dlabels.h"

#include <algorithm>
#include <map>
#include <unordered_map>
#include <unordered_set>
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

// Models write each body segment as four points that no list names: its origin
// and the ends of its anterior, lateral and proximal axes, labelled with one
// prefix and O, A, L, P. They are model output, not markers.
void markSegmentAxes(std::vector<PointDescription>& points, const std::vector<std::string>& labels,
                     const std::string& units)
{
    std::unordered_map<std::string, size_t> markerAt;
    for (size_t i = 0; i < points.size() && i < labels.size(); ++i)
        if (points[i].kind == "marker" && labels[i].size() > 1)
            markerAt.emplace(labels[i], i);
    for (const auto& origin : markerAt) {
        const std::string& label = origin.first;
        if (label.back() != 'O')
            continue;
        const std::string prefix = label.substr(0, label.size() - 1);
        std::vector<size_t> quartet{origin.second};
        for (char axis : {'A', 'L', 'P'}) {
            const auto it = markerAt.find(prefix + axis);
            if (it != markerAt.end())
                quartet.push_back(it->second);
        }
        if (quartet.size() < 4)
            continue;
        for (size_t i : quartet) {
            points[i].kind = "axis";
            points[i].units = units;
        }
    }
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
    std::unordered_set<std::string> taken;
    // Per label, the first suffix not yet tried: a file may repeat one label on
    // every point, and trying from #2 each time would be quadratic.
    std::unordered_map<std::string, int> nextSuffix;
    for (int i = 0; i < pointCount; ++i) {
        const std::string label = size_t(i) < labels.size() ? labels[size_t(i)] : std::string();
        const std::string base = label.empty() ? "P" + std::to_string(i + 1) : label;
        std::string name = base;
        if (taken.count(name)) {
            int& n = nextSuffix.emplace(base, 2).first->second;
            do
                name = base + "#" + std::to_string(n++);
            while (taken.count(name));
        }
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
    markSegmentAxes(out, labels, markerUnits);
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
