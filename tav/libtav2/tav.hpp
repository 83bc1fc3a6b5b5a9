#pragma once
// Sample records of the capture API. The host hands these across the module
// boundary by pointer, so widths, order and signedness are fixed.
#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

namespace TAV {

struct Marker {
    uint32_t id;
    uint32_t flags;
    int64_t time;
    float x, y, z;
    float cond;
};

struct Rigid {
    uint32_t id;
    uint32_t flags;
    int64_t time;
    float pose[7]; // position 0..2, orientation 3..6
    float cond;
};

struct Peak {
    uint32_t id;
    uint32_t flags;
    int64_t time;
    uint16_t camera;
    uint16_t detector;
    uint32_t width;
    float pos;
    float amp;
};

struct Plane {
    uint32_t id;
    uint32_t flags;
    int64_t time;
    uint16_t camera;
    uint16_t detector;
    float plane[4];
    float offset;
};

struct Camera {
    uint32_t id;
    uint32_t flags;
    float pose[7];
    float cond;
};

struct MarkerInfo {
    MarkerInfo(uint32_t id, uint32_t tracker_id, const std::string& name, const std::string& options)
        : id(id), tracker_id(tracker_id), name(name), options(options) {}
    uint32_t id;
    uint32_t tracker_id;
    std::string name;
    std::string options;
};

struct TrackerInfo {
    TrackerInfo(uint32_t id, const std::string& type, const std::string& name,
                const std::string& options, const std::vector<uint32_t>& marker_ids)
        : id(id), type(type), name(name), options(options), marker_ids(marker_ids) {}
    uint32_t id;
    std::string type;
    std::string name;
    std::string options;
    std::vector<uint32_t> marker_ids;
};

struct DeviceInfo {
    explicit DeviceInfo(uint64_t hw_id) : hw_id(hw_id) {}
    uint64_t hw_id;
    int64_t time = 0;
    std::string type;
    std::string name;
    std::string options;
    std::string status;
};

// Bit-for-bit copyable records with C layout: the host and the module must agree on every byte.
template <class T>
constexpr bool isPlainRecord = std::is_trivially_copyable<T>::value && std::is_standard_layout<T>::value;
static_assert(isPlainRecord<Marker> && isPlainRecord<Rigid> && isPlainRecord<Peak> && isPlainRecord<Plane> &&
                  isPlainRecord<Camera>,
              "sample records are plain structures");

// Signedness matters as much as width: time is signed, ids and flags are not.
template <class T>
constexpr bool hasSampleHeader = std::is_same<decltype(T::id), uint32_t>::value &&
                                 std::is_same<decltype(T::flags), uint32_t>::value &&
                                 std::is_same<decltype(T::time), int64_t>::value && offsetof(T, id) == 0 &&
                                 offsetof(T, flags) == 4 && offsetof(T, time) == 8;
static_assert(hasSampleHeader<Marker> && hasSampleHeader<Rigid> && hasSampleHeader<Peak> && hasSampleHeader<Plane>,
              "id, flags, time lead every timed sample");

static_assert(sizeof(Marker) == 32, "Marker layout");
static_assert(offsetof(Marker, x) == 16 && offsetof(Marker, y) == 20 && offsetof(Marker, z) == 24 &&
                  offsetof(Marker, cond) == 28,
              "Marker field offsets");
static_assert(sizeof(Rigid) == 48, "Rigid layout");
static_assert(offsetof(Rigid, pose) == 16 && offsetof(Rigid, cond) == 44, "Rigid field offsets");
static_assert(sizeof(Peak) == 32, "Peak layout");
static_assert(std::is_same<decltype(Peak::camera), uint16_t>::value &&
                  std::is_same<decltype(Peak::detector), uint16_t>::value &&
                  std::is_same<decltype(Peak::width), uint32_t>::value,
              "Peak field types");
static_assert(offsetof(Peak, camera) == 16 && offsetof(Peak, detector) == 18 && offsetof(Peak, width) == 20 &&
                  offsetof(Peak, pos) == 24 && offsetof(Peak, amp) == 28,
              "Peak field offsets");
static_assert(sizeof(Plane) == 40, "Plane layout");
static_assert(std::is_same<decltype(Plane::camera), uint16_t>::value &&
                  std::is_same<decltype(Plane::detector), uint16_t>::value,
              "Plane field types");
static_assert(offsetof(Plane, camera) == 16 && offsetof(Plane, detector) == 18 && offsetof(Plane, plane) == 20 &&
                  offsetof(Plane, offset) == 36,
              "Plane field offsets");
static_assert(sizeof(Camera) == 40, "Camera layout");
static_assert(std::is_same<decltype(Camera::id), uint32_t>::value &&
                  std::is_same<decltype(Camera::flags), uint32_t>::value && offsetof(Camera, flags) == 4 &&
                  offsetof(Camera, pose) == 8 && offsetof(Camera, cond) == 36,
              "Camera field offsets");
static_assert(std::is_same<decltype(DeviceInfo::hw_id), uint64_t>::value &&
                  std::is_same<decltype(DeviceInfo::time), int64_t>::value,
              "DeviceInfo field types");

} // namespace TAV
