#pragma once
// The host's mouse state. x and y are pixels in the GL window, y counted upwards
// from the bottom row (the GL convention the viewport arithmetic uses).
#include <QMetaType>
#include <ctime>

struct Mouse {
    int x = 0, y = 0;
    time_t t = 0;        // event time in milliseconds
    int dx = 0, dy = 0;  // movement since the previous event
    time_t dt = 0;
    int area = 0;        // index of the view under the mouse in its window, -1 for none
    int x0 = 0, y0 = 0;  // where the last press happened
    int button = 0, last_button = 0;     // buttons held now; the button of the last press or release
    int modifier = 0, last_modifier = 0; // keyboard modifiers now; those of the last press
    int double_press = 0, double_click = 0; // the last press was a double click; and its release followed
};

Q_DECLARE_METATYPE(Mouse*)
