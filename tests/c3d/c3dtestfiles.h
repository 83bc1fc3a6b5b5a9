#pragma once
// Small C3D files written for the tests, and byte-level access to them.
#include "host/c3d/c3dwriter.h"

#include <QByteArray>
#include <QString>

#include <functional>

// Writes setup.frameCount frames; fill sets frame n's pointCount x {x, y, z, word4}.
bool writeTestTake(const QString& path, const C3D::WriterSetup& setup,
                   const std::function<void(int64_t n, float* values)>& fill);

// A setup of the given size with labels M1, M2, ...
C3D::WriterSetup testSetup(int points, int64_t frames);

QByteArray readBytes(const QString& path);
void writeBytes(const QString& path, const QByteArray& bytes);
