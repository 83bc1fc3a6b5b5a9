#pragma once
// The rigid bodies' rotations as tracks the graph can draw: each rigid sample
// carries its orientation as an axis-angle vector, in degrees, in pose[0..2].
#include "host/tavview/take.h"
#include "math/vector.h"

// Axis times angle (degrees, 0 to 180) of the unit quaternion (x, y, z, w);
// the identity and a degenerate quaternion give (0, 0, 0).
Vector axisAngleDegrees(float x, float y, float z, float w);

// The take's rigid bodies with their rotations in place of their positions; no
// markers. Rate, first frame and names stay; the units are degrees.
Take rotationTake(const Take& take);
