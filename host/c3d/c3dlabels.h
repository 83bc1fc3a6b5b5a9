#pragma once
// What each 3D point of a C3D file is called and what it holds: a measured marker
// or a model output (angle, force, moment, power, ...) stored in the point block.
#include "host/c3d/c3dparameters.h"

#include <string>
#include <vector>

namespace C3D {

struct PointDescription {
    std::string name;  // trimmed and unique within the file
    std::string kind;  // "marker", or the model output's kind in lower case ("angle", ...)
    std::string units; // trimmed, may be empty
};

// One description per point. Labels come from POINT:LABELS, LABELS2, LABELS3, ...
// (255 a parameter at most); a point without a label is called P<number>. A label
// that repeats gets #2, #3, ... so every name is distinct. Kinds come from the point
// lists named by POINT:TYPE_GROUPS, or by default ANGLES, FORCES, MOMENTS, POWERS,
// SCALARS and REACTIONS; their units from <KIND>_UNITS, a marker's from POINT:UNITS.
// Four otherwise unlisted points named one prefix and O, A, L, P are a model's
// segment axes, of kind "axis" in the markers' units.
std::vector<PointDescription> describePoints(const Parameters& params, int pointCount);

// The strings of a character parameter continued over NAME, NAME2, NAME3, ...
std::vector<std::string> continuedStrings(const Parameters& params, const std::string& group,
                                          const std::string& name);

// "kind=marker;units=mm": the MarkerInfo options of a point.
std::string pointOptions(const PointDescription& d);

} // namespace C3D
