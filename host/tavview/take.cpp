#include "host/tavview/take.h"

#include <cmath>

QList<qint64> Take::timeLut() const
{
    QList<qint64> lut = frames.property<QList<qint64>>("timeLut");
    if (lut.size() == frameCount())
        return lut;
    lut.clear();
    lut.reserve(frameCount());
    for (int i = 0; i < frameCount(); ++i)
        lut.append(rate > 0 ? qint64(std::llround(i * 1e6 / rate)) : qint64(i));
    return lut;
}
