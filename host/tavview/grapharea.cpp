#include "host/tavview/grapharea.h"

#include "modules/core/contract.h"
#include "host/tavview/axisstrip.h"
#include "host/tavview/graphpanel.h"
#include "host/tavview/hovertip.h"
#include "host/tavview/legend.h"
#include "host/tavview/rotations.h"
#include "host/tavview/trackselection.h"
#include "host/tavview/viewcamera.h"

#include <QAction>
#include <QDynamicPropertyChangeEvent>
#include <QGridLayout>
#include <QTimer>

namespace {

enum Row { LegendRow, GraphRow, RotationRow, TimeRow };
enum Column { ValueColumn, GraphColumn };

// The rotations graph draws as the main graph does.
const char* const mirroredProperties[] = {GraphProperty::enableRGB, GraphProperty::axisMask,
                                          GraphProperty::enableRigids, GraphProperty::pointSize, GraphProperty::LOD};

bool isMirrored(const QByteArray& name)
{
    for (const char* m : mirroredProperties)
        if (name == m)
            return true;
    return false;
}

// Both graphs' cameras are aligned alike; returns whether anything changed.
bool copyX(const GL::Viewport& from, GL::Viewport& to)
{
    if (to.pos.x == from.pos.x && to.scale.x == from.scale.x)
        return false;
    to.pos.x = from.pos.x;
    to.scale.x = from.scale.x;
    return true;
}

} // namespace

GraphArea::GraphArea(const ModuleRegistry& r, GraphPanel* panel, QWidget* parent)
    : QWidget(parent), registry(r), mainPanel(panel)
{
    // The corner between the axes has the strips' colour.
    setAutoFillBackground(true);
    QPalette dark = palette();
    dark.setColor(QPalette::Window, QColor(38, 38, 38));
    setPalette(dark);
    grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(0);
    legendBar = new Legend(this);
    valueStrip = new AxisStrip(Qt::Vertical, panel->view(), this);
    timeStrip = new AxisStrip(Qt::Horizontal, panel->view(), this);
    grid->addWidget(legendBar, LegendRow, ValueColumn, 1, 2);
    grid->addWidget(valueStrip, GraphRow, ValueColumn);
    grid->addWidget(panel->window(), GraphRow, GraphColumn);
    grid->addWidget(timeStrip, TimeRow, GraphColumn);
    grid->setRowStretch(GraphRow, 3);
    grid->setColumnStretch(GraphColumn, 1);
    mainTip = new HoverTip(panel);

    connect(panel->window(), &GLWindow::Paint2D, this, [this] {
        valueStrip->update();
        timeStrip->update();
        syncRotationX();
    });
    connect(panel, &GraphPanel::TakeChanged, this, &GraphArea::takeChanged);
    connect(panel, &GraphPanel::RunsChanged, this, &GraphArea::tracksChanged);
    connect(panel, &GraphPanel::SelectionChanged, this, [this](qint64 first, qint64 last) {
        if (mainPanel->selectionShown())
            timeStrip->SetSelection(first, last);
        else
            timeStrip->SetSelection(0, -1);
    });
    connect(panel, &GraphPanel::CursorMoved, this, [this](qint64 index) {
        if (rotationPanel)
            rotationPanel->SeekFrame(index);
    });
    if (QObject* graph = panel->graph()) {
        graph->installEventFilter(this);
        connect(graph, SIGNAL(EnableOriginal(bool)), this, SLOT(originalToggled(bool)));
        legendBar->SetRgb(graph->property(GraphProperty::enableRGB).toBool());
    }
    takeChanged();
    tracksChanged();
}

GraphArea::~GraphArea() { showRotations(false); }

void GraphArea::SetSecondsAxis(bool on)
{
    seconds = on;
    updateScale();
}

TimeScale GraphArea::timeScale() const
{
    TimeScale s;
    s.firstFrame = mainPanel->take().firstFrame;
    s.rate = mainPanel->take().rate;
    const QObject* graph = mainPanel->graph();
    if (graph && graph->property(GraphProperty::drawTC).toBool())
        s.labels = TimeLabels::Timecode;
    else if (seconds)
        s.labels = TimeLabels::Seconds;
    if (s.rate <= 0)
        s.labels = TimeLabels::Frames;
    return s;
}

void GraphArea::updateScale()
{
    const TimeScale s = timeScale();
    timeStrip->SetTimeScale(s);
    timeStrip->SetTitle(s.labels == TimeLabels::Timecode  ? tr("timecode")
                        : s.labels == TimeLabels::Seconds ? tr("s")
                                                          : tr("frame"));
    mainTip->SetTimeScale(s);
    if (rotationTip)
        rotationTip->SetTimeScale(s);
}

void GraphArea::takeChanged()
{
    updateScale();
    // A take without rigid bodies has no rotations to show.
    const bool rigids = rigidCount(mainPanel->take()) > 0;
    for (QAction* a : mainPanel->view()->findChildren<QAction*>(QString::fromLatin1(GraphAction::enableRigidAngles)))
        a->setEnabled(rigids);
    if (const QObject* graph = mainPanel->graph())
        showRotations(rigids && graph->property(GraphProperty::drawRBAxisAngle).toBool());
    if (rotationPanel) {
        rotationPanel->SetTake(rotationTake(mainPanel->take()));
        tracksChanged();
    }
}

void GraphArea::tracksChanged()
{
    const Take& take = mainPanel->take();
    QStringList names;
    for (int id : mainPanel->trackSelection().markers)
        names << markerLabel(take, id);
    for (int id : mainPanel->trackSelection().rigids)
        names << rigidLabel(take, id);
    legendBar->SetTracks(names);
    valueStrip->SetTitle(selectionUnits(take, mainPanel->trackSelection()));
    if (!rotationPanel)
        return;
    TrackSelection s;
    s.rigids = mainPanel->trackSelection().rigids;
    if (!(s == rotationPanel->trackSelection()))
        rotationPanel->SetTrackSelection(s);
    fitRotations();
}

void GraphArea::originalToggled(bool)
{
    emit Message(tr("Original Tracks: the take has no edits yet, so the graph already shows it as loaded"));
}

bool GraphArea::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::DynamicPropertyChange && mainPanel && watched == mainPanel->graph())
        graphPropertyChanged(static_cast<QDynamicPropertyChangeEvent*>(event)->propertyName());
    else if (event->type() == QEvent::Resize && rotationPanel && watched == rotationPanel->window())
        // After the panel's own fit on resize, which fits x to the rotations alone.
        QTimer::singleShot(0, this, &GraphArea::fitRotations);
    return QWidget::eventFilter(watched, event);
}

void GraphArea::graphPropertyChanged(const QByteArray& name)
{
    const QVariant value = mainPanel->graph()->property(name.constData());
    if (name == GraphProperty::drawTC)
        updateScale();
    else if (name == GraphProperty::drawRBAxisAngle)
        showRotations(value.toBool() && rigidCount(mainPanel->take()) > 0);
    if (name == GraphProperty::enableRGB)
        legendBar->SetRgb(value.toBool());
    if (isMirrored(name) && rotationPanel && rotationPanel->graph()) {
        rotationPanel->graph()->setProperty(name.constData(), value);
        rotationPanel->Repaint();
    }
}

void GraphArea::showRotations(bool on)
{
    if (on == bool(rotationPanel))
        return;
    if (!on) {
        GLWindow* window = rotationPanel->window();
        delete rotationPanel;
        delete window;
        delete rotationStrip;
        rotationStrip = nullptr;
        rotationTip = nullptr; // a child of the panel
        return;
    }
    GraphPanel* p = new GraphPanel(registry, this, this);
    rotationPanel = p;
    if (QObject* graph = p->graph())
        for (const char* name : mirroredProperties)
            graph->setProperty(name, mainPanel->graph()->property(name));
    rotationStrip = new AxisStrip(Qt::Vertical, p->view(), this);
    rotationStrip->SetTitle(tr("deg"));
    grid->addWidget(rotationStrip, RotationRow, ValueColumn);
    grid->addWidget(p->window(), RotationRow, GraphColumn);
    grid->setRowStretch(RotationRow, 2);
    rotationTip = new HoverTip(p);
    rotationTip->SetTimeScale(timeScale());
    p->window()->installEventFilter(this);
    connect(p->window(), &GLWindow::Paint2D, this, [this] {
        if (rotationStrip)
            rotationStrip->update();
        syncRotationX();
    });
    connect(p, &GraphPanel::CursorMoved, mainPanel.data(), &GraphPanel::SeekFrame);
    p->SetTake(rotationTake(mainPanel->take()));
    tracksChanged();
    p->SeekFrame(mainPanel->current());
    p->window()->show();
    rotationStrip->show();
}

void GraphArea::fitRotations()
{
    if (!rotationPanel)
        return;
    GLW* view = rotationPanel->view();
    const int w = int(view->width()), h = int(view->height());
    if (w < 2 || h < 2)
        return;
    fitViewport(view->viewport, rotationPanel->DataRange(2), w, h);
    copyX(mainPanel->view()->viewport, view->viewport);
    rotationPanel->Repaint();
}

// The rotations graph has the main graph's width, so the same x camera shows the same frames.
void GraphArea::syncRotationX()
{
    if (!rotationPanel)
        return;
    if (copyX(mainPanel->view()->viewport, rotationPanel->view()->viewport))
        rotationPanel->Repaint();
}
