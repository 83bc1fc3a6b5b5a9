#pragma once
// Deleting and reverting the samples of some markers over a span of frames.
#include "host/edit/samplechange.h"

#include <QList>

// The samples of ids inside span become missing. Samples already missing are left out.
SampleChanges deletion(const TAV::Frames& take, const QList<int>& ids, FrameSpan span);

// The samples of ids inside span return to what original holds. Unchanged ones are left out.
SampleChanges reversion(const TAV::Frames& take, const TAV::Frames& original, const QList<int>& ids,
                        FrameSpan span);

// A missing sample of marker id in frame, as the loader makes one.
TAV::Marker missingSample(uint32_t id, int64_t time);
