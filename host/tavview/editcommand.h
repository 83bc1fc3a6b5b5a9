#pragma once
// tavview's cleaning without a window: tavview IN.c3d [--delete-spikes T]
// [--fill METHOD --max-gap N] --save OUT.c3d. Prints what it did, one line per step.
#include "host/tavview/options.h"

// Returns false with one line in error when the take cannot be cleaned or saved.
bool runEditCommand(const ViewOptions& options, QString& error);
