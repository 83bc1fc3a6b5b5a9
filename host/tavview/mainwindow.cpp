#include "host/tavview/mainwindow.h"

#include "modules/core/contract.h"
#include "modules/core/trackruns.h"
#include "host/tavview/areas.h"
#include "host/tavview/areaspanel.h"
#include "host/tavview/editdock.h"
#include "host/tavview/editing.h"
#include "host/tavview/grapharea.h"
#include "host/tavview/graphpanel.h"
#include "host/tavview/playback.h"
#include "host/tavview/viewcamera.h"
#include "host/tavview/viewnavigator.h"

#include <QDockWidget>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QMessageBox>
#include <QSignalBlocker>
#include <QStatusBar>
#include <QVBoxLayout>

#include <algorithm>

namespace {

const int idRole = Qt::UserRole;
const int regionMessageMs = 5000;
// As one wheel notch.
const double keyZoom = 1.25;
// The graph's key actions that act where the mouse is or from the cursor: they
// work while the window is active, not only while the graph has the focus.
const char* const windowWideActions[] = {GraphAction::selectRegion, GraphAction::updateOffsets, GraphAction::nextAOI,
                                         GraphAction::prevAOI};

QListWidget* makeTrackList(const QString& name, QWidget* parent)
{
    auto* list = new QListWidget(parent);
    list->setObjectName(name);
    list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    return list;
}

QList<int> selectedIds(const QListWidget* list)
{
    QList<int> ids;
    for (int i = 0; i < list->count(); ++i)
        if (list->item(i)->isSelected())
            ids.append(list->item(i)->data(idRole).toInt());
    return ids;
}

void selectIds(QListWidget* list, const QList<int>& ids)
{
    const QSignalBlocker block(list);
    QListWidgetItem* first = nullptr;
    for (int i = 0; i < list->count(); ++i) {
        QListWidgetItem* item = list->item(i);
        item->setSelected(ids.contains(item->data(idRole).toInt()));
        if (item->isSelected() && !first)
            first = item;
    }
    if (first)
        list->scrollToItem(first);
}

} // namespace

MainWindow::MainWindow(const ModuleRegistry& registry, QWidget* parent) : QMainWindow(parent)
{
    graphPanel = new GraphPanel(registry, this, this);
    player = new Playback(graphPanel);
    new ViewNavigator(graphPanel);
    area = new GraphArea(registry, graphPanel, this);
    setCentralWidget(area);

    auto* tracks = new QWidget(this);
    markers = makeTrackList(QStringLiteral("markers"), tracks);
    rigids = makeTrackList(QStringLiteral("rigids"), tracks);
    outputs = makeTrackList(QStringLiteral("outputs"), tracks);
    filter = new QLineEdit(tracks);
    filter->setObjectName(QStringLiteral("trackFilter"));
    filter->setPlaceholderText(tr("Filter by label or id"));
    filter->setClearButtonEnabled(true);
    auto* layout = new QVBoxLayout(tracks);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(filter);
    layout->addWidget(new QLabel(tr("Markers"), tracks));
    layout->addWidget(markers, 3);
    layout->addWidget(new QLabel(tr("Rigid bodies"), tracks));
    layout->addWidget(rigids, 1);
    // Angles, forces, moments and powers a model computed: not markers, and in their own units.
    outputsLabel = new QLabel(tr("Model outputs"), tracks);
    layout->addWidget(outputsLabel);
    layout->addWidget(outputs, 2);
    auto* tracksDock = new QDockWidget(tr("Tracks"), this);
    tracksDock->setObjectName(QStringLiteral("tracksDock"));
    tracksDock->setWidget(tracks);
    addDockWidget(Qt::LeftDockWidgetArea, tracksDock);

    areasPanel = new AreasPanel(this);
    auto* areasDock = new QDockWidget(tr("Areas of interest"), this);
    areasDock->setObjectName(QStringLiteral("areasDock"));
    areasDock->setWidget(areasPanel);
    addDockWidget(Qt::RightDockWidgetArea, areasDock);
    resizeDocks({tracksDock, areasDock}, {220, 330}, Qt::Horizontal);

    edits = new Editing(graphPanel, this);
    editPanel = new EditDock(edits->editor()->undoStack(), this);
    auto* editsDock = new QDockWidget(tr("Edits"), this);
    editsDock->setObjectName(QStringLiteral("editsDock"));
    editsDock->setWidget(editPanel);
    addDockWidget(Qt::RightDockWidgetArea, editsDock);
    connect(edits, &Editing::Filled, editPanel, [this](const FillReport& report) {
        const Take& take = graphPanel->take();
        editPanel->ShowFills(report, take.firstFrame, take.units);
    });
    connect(editPanel, &EditDock::GapActivated, this, &MainWindow::jumpToArea);
    connect(areasPanel, &AreasPanel::DeleteRequested, edits, &Editing::DeleteFrames);
    connect(areasPanel, &AreasPanel::FillRequested, edits, &Editing::FillFrames);
    connect(areasPanel, &AreasPanel::DeleteAndFillRequested, edits, &Editing::DeleteAndFillFrames);
    connect(edits, &Editing::SpikeThresholdChanged, this, &MainWindow::updateAreas);

    cursorText = new QLabel(this);
    selectionText = new QLabel(this);
    selectionTime = new QLabel(this);
    statusBar()->addPermanentWidget(selectionText);
    statusBar()->addPermanentWidget(selectionTime);
    statusBar()->addPermanentWidget(cursorText);

    connect(filter, &QLineEdit::textChanged, this, &MainWindow::filterTracks);
    connect(markers, &QListWidget::itemSelectionChanged, this, &MainWindow::trackListChanged);
    connect(rigids, &QListWidget::itemSelectionChanged, this, &MainWindow::trackListChanged);
    connect(outputs, &QListWidget::itemSelectionChanged, this, &MainWindow::trackListChanged);
    connect(graphPanel, &GraphPanel::CursorMoved, this, &MainWindow::showCursor);
    connect(graphPanel, &GraphPanel::SelectionChanged, this, &MainWindow::showSelection);
    connect(graphPanel, &GraphPanel::RegionChanged, this, &MainWindow::showRegion);
    connect(graphPanel, &GraphPanel::RunsChanged, this, &MainWindow::updateAreas);
    connect(areasPanel, &AreasPanel::AreaActivated, this, &MainWindow::jumpToArea);
    connect(area, &GraphArea::Message, this, [this](const QString& text) {
        statusBar()->showMessage(text, regionMessageMs);
    });
    connect(edits, &Editing::Message, this, [this](const QString& text) {
        statusBar()->showMessage(text, regionMessageMs);
    });

    for (const char* name : windowWideActions)
        for (QAction* a : graphPanel->view()->findChildren<QAction*>(QString::fromLatin1(name)))
            a->setShortcutContext(Qt::WindowShortcut);

    buildMenus();
    resize(1400, 760);
}

void MainWindow::buildMenus()
{
    QMenu* file = menuBar()->addMenu(tr("&File"));
    file->addAction(tr("&Open..."), this, &MainWindow::openFile, QKeySequence::Open);
    recentMenu = file->addMenu(tr("Open &Recent"));
    recentMenu->setObjectName(QStringLiteral("recent"));
    fillRecentMenu();
    file->addAction(edits->saveAsAction());
    file->addSeparator();
    file->addAction(tr("&Quit"), this, &QWidget::close, QKeySequence::Quit);

    QMenu* edit = menuBar()->addMenu(tr("&Edit"));
    edit->setObjectName(QStringLiteral("edit"));
    edits->BuildMenu(edit);

    QMenu* view = menuBar()->addMenu(tr("&View"));
    auto add = [view](const QString& text, const char* name, const QKeySequence& key) {
        QAction* a = view->addAction(text);
        a->setObjectName(QString::fromLatin1(name));
        a->setShortcut(key);
        return a;
    };
    connect(add(tr("Fit &all frames"), "fitall", Qt::Key_Home), &QAction::triggered, graphPanel,
            [this] { graphPanel->Fit(1); });
    connect(add(tr("Fit &selection"), "fitselection", Qt::Key_F), &QAction::triggered, graphPanel,
            [this] { graphPanel->Fit(2); });
    secondsAction = add(tr("Time in s&econds"), "seconds", QKeySequence());
    secondsAction->setCheckable(true);
    connect(secondsAction, &QAction::toggled, area, &GraphArea::SetSecondsAxis);
    view->addSeparator();
    // The graph's own colour and axis switches, which its menu does not offer.
    QAction* rgb = add(tr("&Colour by axis"), "rgb", QKeySequence());
    rgb->setCheckable(true);
    connect(rgb, &QAction::toggled, this, [this](bool on) { setGraphProperty(GraphProperty::enableRGB, on); });
    const char* const axisNames[] = {"axis_x", "axis_y", "axis_z"};
    QList<QAction*> axes;
    for (int axis = 0; axis < 3; ++axis) {
        QAction* a = add(tr("Show &%1").arg(QLatin1Char(char('x' + axis))), axisNames[axis], QKeySequence());
        a->setCheckable(true);
        const int bit = 1 << axis;
        connect(a, &QAction::toggled, this, [this, bit](bool on) {
            const QObject* graph = graphPanel->graph();
            const int mask = graph ? graph->property(GraphProperty::axisMask).toInt() : 7;
            setGraphProperty(GraphProperty::axisMask, on ? mask | bit : mask & ~bit);
        });
        axes << a;
    }
    rgbAction = rgb;
    axisActions = axes;
    syncViewSwitches();
    connect(view, &QMenu::aboutToShow, this, &MainWindow::syncViewSwitches);
    view->addSeparator();
    QAction* play = add(tr("&Play"), "play", Qt::Key_Space);
    play->setCheckable(true);
    connect(play, &QAction::triggered, player, &Playback::Toggle);
    connect(player, &Playback::PlayingChanged, play, &QAction::setChecked);
    connect(add(tr("&Next frame"), "nextframe", Qt::Key_Right), &QAction::triggered, graphPanel,
            [this] { graphPanel->SeekFrame(graphPanel->current() + 1); });
    connect(add(tr("P&revious frame"), "prevframe", Qt::Key_Left), &QAction::triggered, graphPanel,
            [this] { graphPanel->SeekFrame(graphPanel->current() - 1); });
    connect(add(tr("&Last frame"), "lastframe", Qt::Key_End), &QAction::triggered, graphPanel,
            [this] { seekAndShow(graphPanel->take().frameCount() - 1); });
    connect(add(tr("Page &forward"), "pageforward", Qt::Key_PageDown), &QAction::triggered, graphPanel,
            [this] { seekAndShow(graphPanel->current() + visibleFrames()); });
    connect(add(tr("Page &back"), "pageback", Qt::Key_PageUp), &QAction::triggered, graphPanel,
            [this] { seekAndShow(graphPanel->current() - visibleFrames()); });
    QAction* zoomIn = add(tr("Zoom &in"), "zoomin", Qt::Key_Plus);
    zoomIn->setShortcuts({Qt::Key_Plus, Qt::Key_Equal});
    connect(zoomIn, &QAction::triggered, graphPanel, [this] { zoomTime(keyZoom); });
    connect(add(tr("Zoom &out"), "zoomout", Qt::Key_Minus), &QAction::triggered, graphPanel,
            [this] { zoomTime(1.0 / keyZoom); });

    QMenu* help = menuBar()->addMenu(tr("&Help"));
    help->addAction(tr("&Keys and mouse"), this, &MainWindow::showHelp, QKeySequence::HelpContents);
}

// The switches show the graph's state (preferences may have changed it).
void MainWindow::syncViewSwitches()
{
    const QObject* graph = graphPanel->graph();
    if (!graph)
        return;
    const QSignalBlocker block(rgbAction);
    rgbAction->setChecked(graph->property(GraphProperty::enableRGB).toBool());
    for (int axis = 0; axis < axisActions.size(); ++axis) {
        const QSignalBlocker blockAxis(axisActions[axis]);
        axisActions[axis]->setChecked(graph->property(GraphProperty::axisMask).toInt() & (1 << axis));
    }
}

void MainWindow::seekAndShow(qint64 index)
{
    graphPanel->SeekFrame(std::clamp<qint64>(index, 0, std::max(0, graphPanel->take().frameCount() - 1)));
    graphPanel->ShowFrames(graphPanel->current(), graphPanel->current());
}

qint64 MainWindow::visibleFrames() const
{
    const GLW* view = graphPanel->view();
    const int w = int(view->width());
    return std::max<qint64>(1, qint64(view->viewport.Right(w) - view->viewport.Left(w)));
}

// About the cursor when it is in view, else about the middle.
void MainWindow::zoomTime(double factor)
{
    GLW* view = graphPanel->view();
    const int w = int(view->width()), h = int(view->height());
    if (w < 2 || h < 2)
        return;
    const GL::Viewport& vp = view->viewport;
    const double cursor = double(graphPanel->current());
    const bool inView = cursor >= vp.Left(w) && cursor <= vp.Right(w);
    const double px = inView ? (cursor - vp.Left(w)) / (vp.Right(w) - vp.Left(w)) * w : w / 2.0;
    zoomViewport(view->viewport, factor, 1.0, QPointF(px, h / 2.0), w, h);
    graphPanel->Repaint();
}

void MainWindow::setGraphProperty(const char* name, const QVariant& value)
{
    if (QObject* graph = graphPanel->graph()) {
        graph->setProperty(name, value);
        graphPanel->Repaint();
    }
}

void MainWindow::showHelp()
{
    QMessageBox::information(
        this, tr("Keys and mouse"),
        tr("<table>"
           "<tr><td>Left click or drag</td><td>move the cursor</td></tr>"
           "<tr><td>Shift + left drag</td><td>select frames</td></tr>"
           "<tr><td>Middle or Ctrl + left drag</td><td>pan</td></tr>"
           "<tr><td>Wheel / Ctrl + wheel</td><td>zoom time / values</td></tr>"
           "<tr><td>Shift + wheel</td><td>scroll in time</td></tr>"
           "<tr><td>Home / F</td><td>fit all frames / the selection</td></tr>"
           "<tr><td>Space</td><td>play or stop</td></tr>"
           "<tr><td>Left / Right</td><td>previous / next frame</td></tr>"
           "<tr><td>End / Page Up / Page Down</td><td>last frame / a view back / a view on</td></tr>"
           "<tr><td>+ / -</td><td>zoom time in / out</td></tr>"
           "<tr><td>Ctrl+. / Ctrl+,</td><td>next / previous area of interest</td></tr>"
           "<tr><td>R</td><td>select the run under the mouse</td></tr>"
           "<tr><td>T</td><td>offset the tracks to zero under the mouse</td></tr>"
           "<tr><td>Delete</td><td>delete the selected tracks' samples in the selection</td></tr>"
           "<tr><td>Ctrl+Z / Ctrl+Shift+Z</td><td>undo / redo an edit</td></tr>"
           "<tr><td>Right click</td><td>the graph's menu</td></tr>"
           "</table>"));
}

void MainWindow::ShowTake(const Take& take, const TrackSelection& selection, const QString& source)
{
    // Before the panel takes it: the take's whole range is reported as the
    // selection then, and its times must already be the new take's.
    frameTimes = take.timeLut();
    graphPanel->SetTake(take);
    edits->SetSourcePath(source);
    fillTrackLists();
    SelectTracks(selection);
    setWindowTitle(tr("%1 - tavview (%2 frames at %3 Hz)")
                       .arg(take.name)
                       .arg(take.frameCount())
                       .arg(take.rate, 0, 'g', 6));
    showCursor();
    graphPanel->Fit(2);
    graphPanel->window()->setFocus();
}

void MainWindow::fillTrackLists()
{
    const Take& take = graphPanel->take();
    const QSignalBlocker blockMarkers(markers), blockRigids(rigids), blockOutputs(outputs);
    markers->clear();
    rigids->clear();
    outputs->clear();
    for (int id = 0; id < markerCount(take); ++id) {
        const QString kind = markerKind(take, id);
        QString text = QStringLiteral("%1  %2").arg(id).arg(markerLabel(take, id));
        const bool marker = kind == QLatin1String("marker");
        if (!marker)
            text += QStringLiteral("  (%1, %2)").arg(kind, markerUnits(take, id));
        auto* item = new QListWidgetItem(text, marker ? markers : outputs);
        item->setData(idRole, id);
    }
    outputs->setVisible(outputs->count() > 0);
    outputsLabel->setVisible(outputs->count() > 0);
    for (int id = 0; id < rigidCount(take); ++id) {
        auto* item = new QListWidgetItem(QStringLiteral("%1  %2").arg(id).arg(rigidLabel(take, id)), rigids);
        item->setData(idRole, id);
    }
    filterTracks();
}

// Hides the tracks whose id and label do not hold the filter's text.
void MainWindow::filterTracks()
{
    const QString text = filter->text().trimmed();
    for (QListWidget* list : {markers, rigids, outputs})
        for (int i = 0; i < list->count(); ++i)
            list->item(i)->setHidden(!text.isEmpty() && !list->item(i)->text().contains(text, Qt::CaseInsensitive));
}

void MainWindow::SelectTracks(const TrackSelection& selection)
{
    selectIds(markers, selection.markers);
    selectIds(outputs, selection.markers);
    selectIds(rigids, selection.rigids);
    trackListChanged();
}

void MainWindow::trackListChanged()
{
    TrackSelection s;
    s.markers = selectedIds(markers) + selectedIds(outputs);
    s.rigids = selectedIds(rigids);
    if (!(s == graphPanel->trackSelection()))
        graphPanel->SetTrackSelection(s);
}

QString MainWindow::frameText(qint64 index) const { return QString::number(graphPanel->take().firstFrame + index); }

double MainWindow::secondsAt(qint64 index) const
{
    return index >= 0 && index < frameTimes.size() ? frameTimes.at(int(index)) * 1e-6 : 0.0;
}

void MainWindow::showCursor()
{
    const qint64 i = graphPanel->current();
    const double seconds = secondsAt(i);
    cursorText->setText(tr("Frame %1 (%2 of %3)   %4 s")
                            .arg(frameText(i))
                            .arg(i + 1)
                            .arg(graphPanel->take().frameCount())
                            .arg(seconds, 0, 'f', 3));
}

void MainWindow::showSelection(qint64 first, qint64 last)
{
    selectionText->setText(tr("Selection %1 to %2 (%3 frames)")
                               .arg(frameText(first), frameText(last))
                               .arg(last - first + 1));
    selectionTime->setText(tr("%1 to %2 s").arg(secondsAt(first), 0, 'f', 3).arg(secondsAt(last), 0, 'f', 3));
}

void MainWindow::showRegion(qint64 first, qint64 last)
{
    statusBar()->showMessage(
        tr("Region %1 to %2 (%3 frames)").arg(frameText(first), frameText(last)).arg(last - first + 1),
        regionMessageMs);
}

void MainWindow::updateAreas()
{
    const TrackSelection& s = graphPanel->trackSelection();
    const Take& take = graphPanel->take();
    Regions areas = areasOfInterest(mergedRuns(graphPanel->tracks(), s.markers, s.rigids), graphPanel->jumpMask());
    QVector<TrackArea> byTrack = trackAreas(take, graphPanel->tracks(), s.markers, s.rigids, graphPanel->jumpMask());
    if (edits->spikeThreshold() > 0) {
        for (int id : s.markers)
            for (const Pair& spike : spikeAreas(take.frames, {id}, edits->spikeThreshold())) {
                areas.push_back(spike);
                byTrack.append({markerLabel(take, id), SpikeRun, spike.begin(), spike.end()});
            }
    }
    areasPanel->SetAreas(areas, byTrack, take.firstFrame);
}

void MainWindow::jumpToArea(qint64 first, qint64 last)
{
    graphPanel->ShowFrames(first, last);
    graphPanel->SeekFrame(first);
    graphPanel->SelectFrames(double(first), double(last));
}

void MainWindow::openFile()
{
    const QString path = QFileDialog::getOpenFileName(this, tr("Open a take"), QString(),
                                                      tr("C3D files (*.c3d *.C3D);;All files (*)"));
    if (!path.isEmpty())
        OpenPath(path);
}

bool MainWindow::OpenPath(const QString& path)
{
    Take take;
    QString error;
    if (!loadTake(path, take, error)) {
        QMessageBox::warning(this, tr("Cannot open the take"), error);
        return false;
    }
    ShowTake(take, defaultSelection(take), path);
    RememberFile(path);
    return true;
}

void MainWindow::RememberFile(const QString& path)
{
    recent = withRecentFile(recent, path);
    fillRecentMenu();
}

void MainWindow::fillRecentMenu()
{
    recentMenu->clear();
    for (const QString& path : recent)
        recentMenu->addAction(path, this, [this, path] { OpenPath(path); });
    recentMenu->setEnabled(!recent.isEmpty());
}

Preferences MainWindow::CurrentPreferences() const
{
    Preferences p;
    p.geometry = saveGeometry();
    p.windowState = saveState();
    p.secondsAxis = area->secondsAxis();
    p.recentFiles = recent;
    if (const QObject* graph = graphPanel->graph())
        for (const QString& name : rememberedGraphProperties()) {
            const QVariant v = graph->property(name.toLatin1().constData());
            if (v.isValid())
                p.graph.insert(name, v);
        }
    return p;
}

void MainWindow::ApplyPreferences(const Preferences& p)
{
    if (!p.geometry.isEmpty())
        restoreGeometry(p.geometry);
    if (!p.windowState.isEmpty())
        restoreState(p.windowState);
    secondsAction->setChecked(p.secondsAxis);
    recent = p.recentFiles;
    fillRecentMenu();
    QObject* graph = graphPanel->graph();
    if (!graph)
        return;
    for (auto it = p.graph.cbegin(); it != p.graph.cend(); ++it) {
        const QByteArray name = it.key().toLatin1();
        // Settings files give text back; keep the type the graph gave the property.
        QVariant v = it.value();
        const QVariant now = graph->property(name.constData());
        v.convert(now.isValid() ? now.userType() : int(QMetaType::Bool));
        graph->setProperty(name.constData(), v);
    }
    syncViewSwitches();
    graphPanel->Repaint();
}
