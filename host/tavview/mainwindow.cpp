#include "host/tavview/mainwindow.h"

#include "host/tavview/areas.h"
#include "host/tavview/areaspanel.h"
#include "host/tavview/grapharea.h"
#include "host/tavview/graphpanel.h"
#include "host/tavview/playback.h"
#include "host/tavview/viewnavigator.h"

#include <QDockWidget>
#include <QFileDialog>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QMessageBox>
#include <QSignalBlocker>
#include <QStatusBar>
#include <QVBoxLayout>

namespace {

const int idRole = Qt::UserRole;
const int regionMessageMs = 5000;

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
    auto* layout = new QVBoxLayout(tracks);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(new QLabel(tr("Markers"), tracks));
    layout->addWidget(markers, 3);
    layout->addWidget(new QLabel(tr("Rigid bodies"), tracks));
    layout->addWidget(rigids, 1);
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

    cursorText = new QLabel(this);
    selectionText = new QLabel(this);
    selectionTime = new QLabel(this);
    statusBar()->addPermanentWidget(selectionText);
    statusBar()->addPermanentWidget(selectionTime);
    statusBar()->addPermanentWidget(cursorText);

    connect(markers, &QListWidget::itemSelectionChanged, this, &MainWindow::trackListChanged);
    connect(rigids, &QListWidget::itemSelectionChanged, this, &MainWindow::trackListChanged);
    connect(graphPanel, &GraphPanel::CursorMoved, this, &MainWindow::showCursor);
    connect(graphPanel, &GraphPanel::SelectionChanged, this, &MainWindow::showSelection);
    connect(graphPanel, &GraphPanel::RegionChanged, this, &MainWindow::showRegion);
    connect(graphPanel, &GraphPanel::RunsChanged, this, &MainWindow::updateAreas);
    connect(areasPanel, &AreasPanel::AreaActivated, this, &MainWindow::jumpToArea);
    connect(area, &GraphArea::Message, this, [this](const QString& text) {
        statusBar()->showMessage(text, regionMessageMs);
    });

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
    file->addSeparator();
    file->addAction(tr("&Quit"), this, &QWidget::close, QKeySequence::Quit);

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
    QAction* play = add(tr("&Play"), "play", Qt::Key_Space);
    play->setCheckable(true);
    connect(play, &QAction::triggered, player, &Playback::Toggle);
    connect(player, &Playback::PlayingChanged, play, &QAction::setChecked);
    connect(add(tr("&Next frame"), "nextframe", Qt::Key_Right), &QAction::triggered, graphPanel,
            [this] { graphPanel->SeekFrame(graphPanel->current() + 1); });
    connect(add(tr("P&revious frame"), "prevframe", Qt::Key_Left), &QAction::triggered, graphPanel,
            [this] { graphPanel->SeekFrame(graphPanel->current() - 1); });

    QMenu* help = menuBar()->addMenu(tr("&Help"));
    help->addAction(tr("&Keys and mouse"), this, &MainWindow::showHelp, QKeySequence::HelpContents);
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
           "<tr><td>Ctrl+. / Ctrl+,</td><td>next / previous area of interest</td></tr>"
           "<tr><td>R</td><td>select the run under the mouse</td></tr>"
           "<tr><td>T</td><td>offset the tracks to zero under the mouse</td></tr>"
           "<tr><td>Right click</td><td>the graph's menu</td></tr>"
           "</table>"));
}

void MainWindow::ShowTake(const Take& take, const TrackSelection& selection)
{
    graphPanel->SetTake(take);
    frameTimes = take.timeLut();
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
    const QSignalBlocker blockMarkers(markers), blockRigids(rigids);
    markers->clear();
    rigids->clear();
    for (int id = 0; id < markerCount(take); ++id) {
        const QString kind = markerKind(take, id);
        QString text = QStringLiteral("%1  %2").arg(id).arg(markerLabel(take, id));
        if (kind != QLatin1String("marker"))
            text += QStringLiteral("  (%1)").arg(kind);
        auto* item = new QListWidgetItem(text, markers);
        item->setData(idRole, id);
    }
    for (int id = 0; id < rigidCount(take); ++id) {
        auto* item = new QListWidgetItem(QStringLiteral("%1  %2").arg(id).arg(rigidLabel(take, id)), rigids);
        item->setData(idRole, id);
    }
}

void MainWindow::SelectTracks(const TrackSelection& selection)
{
    selectIds(markers, selection.markers);
    selectIds(rigids, selection.rigids);
    trackListChanged();
}

void MainWindow::trackListChanged()
{
    TrackSelection s;
    s.markers = selectedIds(markers);
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
    areasPanel->SetAreas(areasOfInterest(mergedRuns(graphPanel->tracks(), s.markers, s.rigids),
                                         graphPanel->jumpMask()),
                         graphPanel->take().firstFrame);
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
    ShowTake(take, defaultSelection(take));
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
    graphPanel->Repaint();
}
