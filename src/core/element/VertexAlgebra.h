// SPDX-License-Identifier: MIT
// Arithmetic with vertices, for what draws curves.
#pragma once

#include <cmath>
#include <numbers>

#include "core/element/VertexChains.h"

namespace tesselink {

constexpr double kPi = std::numbers::pi;
constexpr double kTurn = 2 * kPi;
constexpr double kRadians = kPi / 180;  // in a degree
constexpr double kDegrees = 180 / kPi;  // in a radian

inline Vertex operator+(const Vertex& a, const Vertex& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
inline Vertex operator-(const Vertex& a, const Vertex& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
inline Vertex operator*(double f, const Vertex& a) { return {f * a.x, f * a.y, f * a.z}; }
inline double Dot(const Vertex& a, const Vertex& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
inline double Length(const Vertex& a) { return std::hypot(a.x, a.y, a.z); }

}  // namespace tesselink
