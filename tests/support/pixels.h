#pragma once
// Counting pixels of a picture by colour.
#include <QColor>
#include <QImage>

// Pixels of strong red: the x axis drawn in its own colour.
inline int strongRedPixels(const QImage& image)
{
    int n = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QColor c = image.pixelColor(x, y);
            n += c.red() > 150 && c.green() < 80 && c.blue() < 80;
        }
    return n;
}
