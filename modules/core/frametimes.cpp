#include "modules/core/frametimes.h"

#include <cmath>
#include <limits>

QList<qint64> frameTimes(qint64 count, double rate)
{
    QList<qint64> lut;
    if (count <= 0)
        return lut;
    lut.reserve(int(qMin<qint64>(count, std::numeric_limits<int>::max())));
    for (qint64 i = 0; i < count; ++i)
        lut.append(rate > 0 ? qint64(std::llround(double(i) * 1e6 / rate)) : i);
    return lut;
}
