#include "host/tavview/snapshot.h"

#include "host/tavview/grapharea.h"
#include "host/tavview/graphpanel.h"

#include <QEventLoop>
#include <QFileInfo>
#include <QImageWriter>
#include <QLabel>
#include <QPainter>
#include <QPointer>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace {
// A first paint takes well under a second on its own, but many seconds on a machine
// busy with other GL work; this only stops a broken display from hanging the program.
const int paintTimeoutMs = 45000;
} // namespace

QString snapshotTitle(const GraphPanel& panel, qint64 firstIndex, qint64 lastIndex)
{
    const Take& take = panel.take();
    const qint64 first = take.firstFrame, last = take.firstFrame + take.frameCount() - 1;
    return QStringLiteral("%1   %2 Hz   frames %3 to %4 of %5 to %6")
        .arg(take.name)
        .arg(take.rate, 0, 'g', 6)
        .arg(first + firstIndex)
        .arg(first + lastIndex)
        .arg(first)
        .arg(last);
}

Snapshot renderSnapshot(const ModuleRegistry& registry, GraphPanel& panel, const QSize& size, QString& error)
{
    Snapshot shot;
    GLWindow* window = panel.window();
    if (!window || !panel.graph()) {
        error = QStringLiteral("there is no graph to take a picture of");
        return shot;
    }
    QWidget frame;
    frame.setAutoFillBackground(true);
    QPalette dark = frame.palette();
    dark.setColor(QPalette::Window, QColor(38, 38, 38));
    dark.setColor(QPalette::WindowText, QColor(235, 235, 235));
    frame.setPalette(dark);
    auto* title = new QLabel(&frame);
    title->setContentsMargins(6, 4, 6, 2);
    auto* area = new GraphArea(registry, &panel, &frame);
    auto* layout = new QVBoxLayout(&frame);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(title);
    layout->addWidget(area, 1);
    // The panel's window outlives the frame, whatever happens below.
    struct GiveBack {
        QPointer<GLWindow> window;
        ~GiveBack()
        {
            if (window)
                window->setParent(nullptr);
        }
    } giveBack{window};
    frame.setFixedSize(size);
    // A picture needs no keyboard: leave the focus where it is on a shared display.
    frame.setAttribute(Qt::WA_ShowWithoutActivating);

    // Read back inside the paint, once the graph has drawn and before the buffers
    // are swapped: the picture is then surely in the buffer being read. This
    // handler is connected after the graph's Draw2D, so it runs after it.
    QEventLoop loop;
    QImage graph;
    const QMetaObject::Connection c = QObject::connect(window, &GLWindow::Paint2D, &loop, [&](GLW* view) {
        if (view != panel.view())
            return;
        graph = window->grabFrameBuffer();
        loop.quit();
    });
    QTimer::singleShot(paintTimeoutMs, &loop, &QEventLoop::quit);
    frame.show();
    loop.exec();
    QObject::disconnect(c);
    if (graph.isNull()) {
        error = QStringLiteral("the graph was never painted (is there a working display with OpenGL?)");
        return shot;
    }
    const GL::Viewport& vp = panel.view()->viewport;
    const int w = int(panel.view()->width());
    const qint64 last = panel.take().frameCount() - 1;
    title->setText(snapshotTitle(panel, std::max<qint64>(0, qint64(std::ceil(vp.Left(w)))),
                                 std::min(last, qint64(std::floor(vp.Right(w))))));
    // The widgets draw themselves; the GL picture goes where its window is.
    shot.image = frame.grab().toImage().convertToFormat(QImage::Format_RGB32);
    shot.graph = QRect(window->mapTo(&frame, QPoint(0, 0)), window->size());
    QPainter(&shot.image).drawImage(shot.graph.topLeft(), graph);
    return shot;
}

QStringList writableFormats()
{
    QStringList formats;
    for (const QByteArray& f : QImageWriter::supportedImageFormats())
        formats << QString::fromLatin1(f);
    return formats;
}

bool canWritePicture(const QString& path, QString& error)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (writableFormats().contains(suffix))
        return true;
    error = suffix.isEmpty() ? QStringLiteral("%1 has no suffix to name the picture's format (png, jpg, ...)").arg(path)
                             : QStringLiteral("cannot write .%1 pictures (%2 can be written)")
                                   .arg(suffix, writableFormats().join(QStringLiteral(", ")));
    return false;
}

bool saveSnapshot(const ModuleRegistry& registry, GraphPanel& panel, const QSize& size, const QString& path,
                  QString& error, QRect* graph)
{
    if (!canWritePicture(path, error))
        return false;
    const Snapshot shot = renderSnapshot(registry, panel, size, error);
    if (shot.image.isNull())
        return false;
    QImageWriter writer(path, QFileInfo(path).suffix().toLower().toLatin1());
    if (!writer.write(shot.image)) {
        error = QStringLiteral("cannot write the picture to %1: %2").arg(path, writer.errorString());
        return false;
    }
    if (graph)
        *graph = shot.graph;
    return true;
}
