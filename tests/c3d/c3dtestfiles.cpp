#include "c3dtestfiles.h"

#include <QFile>

#include <vector>

bool writeTestTake(const QString& path, const C3D::WriterSetup& setup,
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

C3D::WriterSetup testSetup(int points, int64_t frames)
{
    C3D::WriterSetup s;
    s.pointCount = points;
    s.frameCount = frames;
    s.frameRate = 100.0;
    for (int i = 0; i < points; ++i)
        s.labels.push_back("M" + std::to_string(i + 1));
    return s;
}

QByteArray readBytes(const QString& path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

void writeBytes(const QString& path, const QByteArray& bytes)
{
    QFile f(path);
    if (f.open(QIODevice::WriteOnly | QIODevice::Truncate))
        f.write(bytes);
}
