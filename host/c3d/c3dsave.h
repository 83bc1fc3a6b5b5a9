#pragma once
// Saving an edited take as its source file with the changed point samples written
// back: header, parameter section, analog data, events and every unchanged sample
// keep their bytes. The file is written to a temporary file and renamed over the
// target only when complete, so a failure leaves any old file as it was.
#include "tav/tavframes.h"

#include <QString>

namespace C3D {

// original: the take as loaded from sourcePath; edited: the same take after edits.
// Deleted samples are written as missing, filled ones with residual 0 (the format's
// mark of an interpolated sample). On failure returns false, error says why.
bool saveEditedTake(const QString& sourcePath, const TAV::Frames& original, const TAV::Frames& edited,
                    const QString& outPath, QString* error);

} // namespace C3D
