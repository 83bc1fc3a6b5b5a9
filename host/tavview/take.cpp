#include "host/tavview/take.h"

#include "modules/core/frametimes.h"

QList<qint64> Take::timeLut() const
{
    QList<qint64> lut = frames.property<QList<qint64>>(TAV::StoreProperty::timeLut);
    if (lut.size() == frameCount())
        return lut;
    return frameTimes(frameCount(), rate);
}
