#pragma once
// The graph's contract with its hosts, spelled once: its dynamic properties with
// their types and defaults, the names of its actions, and its signals and slots in
// method order. Hosts still reach the graph only through its meta-object; these are
// the names they reach it by.
#include "GL/editactions.h"

#include <QMetaType>
#include <QVariant>

#include <array>

// Names of the graph's dynamic properties.
namespace GraphProperty {
constexpr char enableMarkers[] = "enableMarkers";
constexpr char enableRigids[] = "enableRigids";
constexpr char enableFill[] = "enableFill";
constexpr char enableRGB[] = "enableRGB";
constexpr char axisMask[] = "axisMask";
constexpr char modifyRegion[] = "modifyRegion";
constexpr char pointSize[] = "pointSize";
constexpr char pointSizeMin[] = "pointSizeMin";
constexpr char pointSizeMax[] = "pointSizeMax";
constexpr char maximumY[] = "maximumY";
constexpr char minimumY[] = "minimumY";
constexpr char LOD[] = "LOD";
constexpr char linesLODpx[] = "linesLODpx";
constexpr char jumpMask[] = "jumpMask";
constexpr char hoverDistance[] = "hoverDistance";
// Set by slots or by the host, without a default.
constexpr char drawTC[] = "drawTC";
constexpr char drawOrig[] = "drawOrig";
constexpr char drawRBAxisAngle[] = "drawRBAxisAngle";
constexpr char fastDraw[] = "fastDraw";
} // namespace GraphProperty

// A property the graph's constructor sets: its name, type (Bool, Int or Float) and
// default value.
struct PropertyDefault {
    const char* name;
    QMetaType::Type type;
    double value;

    // The default as a variant of exactly that type.
    QVariant variant() const;
};
// The fifteen, in the order the constructor sets them.
extern const std::array<PropertyDefault, 15> graphPropertyDefaults;

// Object names of the graph's actions on its view, as a host finds them.
namespace GraphAction {
constexpr char enableMarkers[] = "enable_markers";
constexpr char enableRigids[] = "enable_rigids";
constexpr char enableRigidAngles[] = "enable_rigid_angles";
constexpr char enableTC[] = "enable_tc";
constexpr char enableOriginal[] = "enable_original";
constexpr char nextAOI[] = "nextaoi";
constexpr char prevAOI[] = "prevaoi";
constexpr char selectRegion[] = "select_region";
constexpr char updateOffsets[] = "updateoffsets";
constexpr char clearOffsets[] = "clearoffsets";
constexpr char moveCursor[] = "movecursor";
constexpr char expandSelect[] = "expandselect";
constexpr char contractSelect[] = "contractselect";
// The host's editing actions, which the graph places first in its menu while a
// selection exists.
constexpr const char* applyTool = EditAction::fillGaps;
constexpr const char* deleteData = EditAction::deleteData;
constexpr const char* revertData = EditAction::revertData;
} // namespace GraphAction

// One signal or slot as the meta-object records it.
struct GraphMethod {
    const char* signature; // normalised, 64-bit frame numbers as qlonglong
    const char* parameters; // parameter names, comma-separated
    bool signal;
    const char* returns;
};
// The eleven signals, then the slots (the defaulted Redraw argument makes a clone).
extern const std::array<GraphMethod, 39> graphMethods;
