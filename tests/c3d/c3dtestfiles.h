#pragma once
// Small C3D files written for the tests, in a temporary folder of their own.
#include "host/c3d/c3dtake.h"
#include "host/c3d/c3dwriter.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <functional>
#include <vector>

// A setup of the given size with labels M1, M2, ...
inline C3D::WriterSetup testSetup(int points, int64_t frames)
{
    C3D::WriterSetup s;
    s.pointCount = points;
    s.frameCount = frames;
    for (int i = 0; i < points; ++i)
        s.labels.push_back("M" + std::to_string(i + 1));
    return s;
}

// Writes setup.frameCount frames; fill sets frame n's pointCount x {x, y, z, word4}.
inline bool writeTestTake(const QString& path, const C3D::WriterSetup& setup,
                          const std::function<void(int64_t n, float* values)>& fill)
{
    C3D::Writer w;
    if (!w.open(path, setup, nullptr))
        return false;
    std::vector<float> values(size_t(setup.pointCount) * 4);
    for (int64_t n = 0; n < setup.frameCount; ++n) {
        fill(n, values.data());
        if (!w.writeFrame(values.data()))
            return false;
    }
    return w.close(nullptr);
}

inline QByteArray bytesOf(const QString& path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

class TakeFiles : public testing::Test {
protected:
    QTemporaryDir dir;
    QString path = dir.filePath("take.c3d");

    TAV::Frames load(const QString& file)
    {
        TAV::Frames take;
        QString error;
        EXPECT_TRUE(C3D::loadTake(file, take, &error)) << error.toStdString();
        return take;
    }
};
