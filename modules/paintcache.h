#pragma once
// The last fast paint of tracks and runs, kept as a GL display list: a repaint in
// which only the cursor moved (playback, seeking) replays it instead of walking the
// take again. It is replayed only while everything that paint read is unchanged.
#include "math/vector.h"
#include "modules/coverage.h"
#include "tav/tavframes.h"
#include "utils/framesinfo.h"
#include "utils/idmap.h"
#include "utils/regions.h"

#include <QByteArray>
#include <QList>
#include <QPointer>
#include <QVariant>

class GLW;
class QOpenGLContext;
class TAVGraph;

// Everything a fast paint of tracks and runs reads, except the cursor.
struct FastPaintInputs {
    // Shared with the graph: holding it keeps those samples alive and unchanged, so a
    // different take always has other data.
    TAV::Frames tracks;
    QList<int> markers, rigids;
    IdMap<Vector> trackOffsets, rbtrackOffsets;
    Regions regions;
    FramesInfo framesInfo; // its cursor left out
    double period = 0;
    qint64 offsetX = 0;
    QList<QByteArray> propertyNames;
    QVariantList propertyValues;
    const GLW* view = nullptr;
    double viewport[7] = {}; // the view's data origin, scale, size and alignment
    WindowMap map;           // GL's transform and viewport, as the cull read them
    PixelRect pixels;
    double margin = 0;

    static FastPaintInputs of(const TAVGraph& g, const GLW& glw, const Coverage& coverage);
    bool operator==(const FastPaintInputs& o) const;
};

class FastPaintCache {
public:
    ~FastPaintCache();
    // Replays the kept paint when it was made in the current context from the same
    // inputs. Otherwise returns false, having started a recording (drawn as it is
    // made) when the previous paint had the same inputs. Without a current Qt GL
    // context it does neither.
    bool replayOrRecord(FastPaintInputs inputs);
    // Ends a recording begun by replayOrRecord.
    void endRecording();
    // Forgets the kept paint, so that the next one walks the take.
    void forget();

private:
    QPointer<QOpenGLContext> context;
    unsigned list = 0;
    bool recording = false, valid = false;
    bool seen = false; // kept holds the inputs of the last paint, recorded or not
    FastPaintInputs kept;
};
