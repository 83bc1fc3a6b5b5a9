#pragma once
// The take quality report as aligned plain text or as CSV.
#include "host/report/takequality.h"

#include <QString>

#include <vector>

// Per take: a summary line, then one row per marker under a column heading.
// Takes are separated by a blank line.
QString qualityText(const std::vector<TakeQuality>& takes);

// Columns take,marker,frames,valid_percent,gaps,longest_gap,poor; each take's
// first row is its total, with an empty marker field and the take's frame count.
QString qualityCsv(const std::vector<TakeQuality>& takes);
