// Any bytes as a C3D file: the reader ends with a take or one line that says why,
// never with a crash, a hang or memory beyond what the bytes themselves hold.
#include "host/c3d/c3dtake.h"

#include <QFile>
#include <QString>
#include <QTemporaryDir>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

QString inputPath()
{
    static QTemporaryDir dir;
    return dir.filePath(QStringLiteral("input.c3d"));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString path = inputPath();
    {
        QFile f(path);
        if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate))
            std::abort();
        f.write(reinterpret_cast<const char*>(data), qint64(size));
    }
    TAV::Frames take;
    QString error;
    if (C3D::loadTake(path, take, &error)) {
        // A take fits its file: every frame read came from at least one byte.
        if (size_t(take.size()) > size)
            std::abort();
    } else if (error.isEmpty() || error.contains(QLatin1Char('\n'))) {
        std::fprintf(stderr, "refused without one line: '%s'\n", qPrintable(error));
        std::abort();
    }
    return 0;
}
