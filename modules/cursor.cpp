// The "movecursor" mouse action: asks the host to seek to the frame under the mouse.
#include "modules/tavgraph.h"

#include "utils/saturate.h"

int TAVGraph::MoveCursor(Mouse*, bool state)
{
    GLW* view = liveView();
    if (!view)
        return 0;
    const Vector p = view->Cursor();
    if (!state)
        return 0;
    // Half up: truncation of x + 0.5, made absolute.
    const qint64 frame = add64(saturate_cast<qint64>(double(p.x) + 0.5), offsetX);
    emit Seek(frame, 0);
    requestRepaint();
    return 1;
}
