#pragma once
// Three single-precision coordinates; built from a marker's position or a rigid
// body's position part.
#include "tav/libtav2/tav.hpp"

#include <cmath>

typedef float Real;

struct Vector {
    Real x = 0, y = 0, z = 0;

    Vector() = default;
    Vector(Real x, Real y, Real z) : x(x), y(y), z(z) {}
    Vector(const TAV::Marker& m) : x(m.x), y(m.y), z(m.z) {}
    Vector(const TAV::Rigid& r) : x(r.pose[0]), y(r.pose[1]), z(r.pose[2]) {}

    Real& operator[](int i) { return i == 0 ? x : (i == 1 ? y : z); }
    Real operator[](int i) const { return i == 0 ? x : (i == 1 ? y : z); }

    bool operator==(const Vector& o) const { return x == o.x && y == o.y && z == o.z; }
    bool operator!=(const Vector& o) const { return !(*this == o); }

    Vector& operator+=(const Vector& o) { x += o.x; y += o.y; z += o.z; return *this; }
    Vector& operator-=(const Vector& o) { x -= o.x; y -= o.y; z -= o.z; return *this; }
    Vector& operator*=(Real s) { x *= s; y *= s; z *= s; return *this; }
    Vector& operator/=(Real s) { x /= s; y /= s; z /= s; return *this; }

    Real length_sq() const { return x * x + y * y + z * z; }
    Real length() const { return std::sqrt(length_sq()); }
    Vector& normalize()
    {
        const Real l = length();
        if (l > 0)
            *this /= l;
        return *this;
    }

    // Rotations about one axis by an angle in radians.
    Vector& rotate_x(Real a)
    {
        const Real c = std::cos(a), s = std::sin(a), ny = c * y - s * z;
        z = s * y + c * z;
        y = ny;
        return *this;
    }
    Vector& rotate_y(Real a)
    {
        const Real c = std::cos(a), s = std::sin(a), nx = c * x + s * z;
        z = -s * x + c * z;
        x = nx;
        return *this;
    }
    Vector& rotate_z(Real a)
    {
        const Real c = std::cos(a), s = std::sin(a), nx = c * x - s * y;
        y = s * x + c * y;
        x = nx;
        return *this;
    }
};

inline Vector operator+(Vector a, const Vector& b) { return a += b; }
inline Vector operator-(Vector a, const Vector& b) { return a -= b; }
inline Vector operator*(Vector a, Real s) { return a *= s; }
inline Vector operator/(Vector a, Real s) { return a /= s; }
