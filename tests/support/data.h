#pragma once
// Where the shared sample capture files live (TAV_DATA_DIR at configure time).
#include <QDir>
#include <QFileInfo>
#include <QString>
#include <gtest/gtest.h>

inline QString sampleDataDir() { return QString::fromUtf8(TAV_DATA_DIR); }

inline QString sampleC3D(const QString& name) { return QDir(sampleDataDir()).filePath("c3d/" + name); }

// Skips the calling test with a clear reason when the sample folder is absent.
#define TAV_REQUIRE_SAMPLE_DATA()                                                             \
    do {                                                                                      \
        if (!QFileInfo(sampleDataDir() + "/c3d").isDir())                                     \
            GTEST_SKIP() << "sample capture files not found in " << TAV_DATA_DIR              \
                         << "/c3d (set -DTAV_DATA_DIR=... to the shared data folder)";        \
    } while (0)
