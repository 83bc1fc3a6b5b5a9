#pragma once
// The host's mouse state. x and y are pixels in the GL window, y counted upwards
// from the bottom row (the GL convention the viewport arithmetic uses).
#include <QMetaType>
#include <ctime>

struct Mouse {
    int x = 0, y = 0;
    time_t t = 0;
    int dx = 0, dy = 0;
    time_t dt = 0;
    int area = 0;
    int x0 = 0, y0 = 0;
    int button = 0, last_button = 0;
    int modifier = 0, last_modifier = 0;
    int double_press = 0, double_click = 0;
};

Q_DECLARE_METATYPE(Mouse*)
