#include "host/tavview/snapshot.h"

#include "host/tavview/graphpanel.h"

#include <QEventLoop>
#include <QTimer>

namespace {
// A first paint takes well under a second; this only stops a broken display from
// hanging the program.
const int paintTimeoutMs = 15000;
} // namespace

QImage renderSnapshot(GraphPanel& panel, const QSize& size, QString& error)
{
    GLWindow* window = panel.window();
    if (!window || !panel.graph()) {
        error = QStringLiteral("there is no graph to take a picture of");
        return QImage();
    }
    window->setFixedSize(size);
    // A picture needs no keyboard: leave the focus where it is on a shared display.
    window->setAttribute(Qt::WA_ShowWithoutActivating);
    panel.Fit(2);

    // Read back inside the paint, once the graph has drawn and before the buffers
    // are swapped: the picture is then surely in the buffer being read. This
    // handler is connected after the graph's Draw2D, so it runs after it.
    QEventLoop loop;
    QImage image;
    const QMetaObject::Connection c = QObject::connect(window, &GLWindow::Paint2D, &loop, [&](GLW* view) {
        if (view != panel.view())
            return;
        image = window->grabFrameBuffer();
        loop.quit();
    });
    QTimer::singleShot(paintTimeoutMs, &loop, &QEventLoop::quit);
    window->show();
    loop.exec();
    QObject::disconnect(c);
    if (image.isNull())
        error = QStringLiteral("the graph was never painted (is there a working display with OpenGL?)");
    return image;
}

bool saveSnapshot(GraphPanel& panel, const QSize& size, const QString& path, QString& error)
{
    const QImage image = renderSnapshot(panel, size, error);
    if (image.isNull())
        return false;
    if (!image.save(path, "PNG")) {
        error = QStringLiteral("cannot write the picture to %1").arg(path);
        return false;
    }
    return true;
}
