#pragma once
// Writing C3D files: Intel processor type, points stored as floats, no analog data.
// The frame count is fixed when the file is opened; frames are then streamed one by
// one, so takes of any length can be written without holding them in memory.
#include <QFile>
#include <QString>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace C3D {

struct WriterSetup {
    int pointCount = 0;
    int64_t frameCount = 0;
    int64_t firstFrame = 1;
    double frameRate = 100.0;
    float residualScale = 0.1f; // size of one residual step; stored as the negative POINT:SCALE
    std::string units = "mm";
    std::vector<std::string> labels; // missing ones are left blank
    // Further character parameters of the POINT group, e.g. {"ANGLES", {...}} or
    // {"ANGLE_UNITS", {"deg"}}. Long lists continue in NAME2, NAME3, ... as labels do.
    std::vector<std::pair<std::string, std::vector<std::string>>> pointStrings;
};

// The fourth value of a point: camera mask and residual steps, or missing.
float fourthWord(int cameras, int residualSteps);
constexpr float MissingFourthWord = -1.0f;

class Writer {
public:
    bool open(const QString& path, const WriterSetup& setup, QString* error);
    // pointCount x {x, y, z, fourth word}.
    bool writeFrame(const float* values);
    // Pads the last block and checks that every frame was written.
    bool close(QString* error);

private:
    bool fail(QString* error, const QString& problem);

    QFile file;
    WriterSetup setup;
    int64_t written = 0;
    std::vector<uint8_t> frameBuffer;
};

} // namespace C3D
