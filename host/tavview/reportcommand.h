#pragma once
// tavview --report: the quality report of many takes, for batch checks.
#include <QStringList>

// Reads every file and prints the report of those that could be read to standard
// output (aligned text, or CSV). A file that cannot be read is named with its
// problem on standard error and the others are still reported. Returns whether
// every file was read.
bool runReport(const QStringList& files, bool csv);
