#include "host/tavview/editing.h"

#include "modules/core/contract.h"
#include "host/c3d/c3dsave.h"
#include "host/tavview/graphpanel.h"

#include <QAction>
#include <QActionGroup>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QMenu>
#include <QMessageBox>
#include <QUndoStack>

#include <algorithm>
#include <cmath>

QString fillErrorText(const FillError& error, const QString& units)
{
    if (!error.known())
        return QObject::tr("error unknown (no stretch nearby to try the fill on)");
    return QObject::tr("RMS %1 %3, max %2 %3").arg(error.rms, 0, 'f', 2).arg(error.max, 0, 'f', 2).arg(units);
}

Editing::Editing(GraphPanel* panel, QWidget* dialogParent)
    : QObject(dialogParent), panel(panel), parentWidget(dialogParent), takeEditor(new TakeEditor(this))
{
    saveAs = new QAction(tr("&Save As..."), this);
    saveAs->setObjectName(QStringLiteral("saveas"));
    saveAs->setShortcut(QKeySequence::SaveAs);
    saveAs->setEnabled(false);
    connect(saveAs, &QAction::triggered, this, &Editing::saveAsAsked);

    connect(panel, &GraphPanel::TakeChanged, this, &Editing::attach);
    connect(takeEditor, &TakeEditor::Edited, this, &Editing::edited);
    if (QObject* graph = panel->graph())
        connect(graph, SIGNAL(EnableOriginal(bool)), this, SLOT(ShowOriginal(bool)));
    connectViewAction(GraphAction::deleteData, &Editing::DeleteSelection);
    connectViewAction(GraphAction::revertData, &Editing::RevertSelection);
    connectViewAction(GraphAction::applyTool, &Editing::FillSelection);
    attach();
}

void Editing::connectViewAction(const char* name, void (Editing::*slot)())
{
    if (QAction* a = panel->view() ? panel->view()->findChild<QAction*>(QString::fromLatin1(name)) : nullptr)
        connect(a, &QAction::triggered, this, slot);
}

void Editing::BuildMenu(QMenu* edit)
{
    QUndoStack* stack = takeEditor->undoStack();
    QAction* undo = stack->createUndoAction(edit, tr("&Undo"));
    undo->setObjectName(QStringLiteral("undo"));
    undo->setShortcut(QKeySequence::Undo);
    QAction* redo = stack->createRedoAction(edit, tr("&Redo"));
    redo->setObjectName(QStringLiteral("redo"));
    redo->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z));
    edit->addAction(undo);
    edit->addAction(redo);
    edit->addSeparator();
    if (GLW* view = panel->view())
        for (const char* name : {GraphAction::deleteData, GraphAction::revertData, GraphAction::applyTool})
            if (QAction* a = view->findChild<QAction*>(QString::fromLatin1(name)))
                edit->addAction(a);

    QMenu* method = edit->addMenu(tr("Fill &Method"));
    method->setObjectName(QStringLiteral("fillmethod"));
    methods = new QActionGroup(method);
    auto addMethod = [&](const QString& name, const QString& text) {
        QAction* a = method->addAction(text);
        a->setObjectName(QStringLiteral("fill_") + name);
        a->setCheckable(true);
        methods->addAction(a);
        return a;
    };
    for (FillMethod m : allFillMethods()) {
        const QString name = fillMethodName(m);
        QAction* a = addMethod(name, name.at(0).toUpper() + name.mid(1));
        a->setChecked(!choice.best && choice.method == m);
        connect(a, &QAction::triggered, this, [this, m] { SetFillMethod(m); });
    }
    QAction* best = addMethod(QStringLiteral("best"), tr("Best method (lowest estimated error per gap)"));
    connect(best, &QAction::triggered, this, [this] { SetBestMethod(true); });

    QAction* donors = edit->addAction(tr("Use Selected Markers as &Donors"), this, &Editing::UseSelectedAsDonors);
    donors->setObjectName(QStringLiteral("setdonors"));
    QAction* clear = edit->addAction(tr("&Choose Donors per Gap"), this, &Editing::ClearDonors);
    clear->setObjectName(QStringLiteral("cleardonors"));
    edit->addSeparator();
    QAction* spikes = edit->addAction(tr("Find &Spikes..."), this, &Editing::spikeThresholdAsked);
    spikes->setObjectName(QStringLiteral("findspikes"));
}

void Editing::spikeThresholdAsked()
{
    bool ok = false;
    const double t = QInputDialog::getDouble(
        parentWidget, tr("Find spikes"),
        tr("List samples whose acceleration exceeds (%1 per frame², 0 for none):").arg(units()), spikeLimit, 0,
        1e9, 3, &ok);
    if (ok)
        SetSpikeThreshold(t);
}

void Editing::SetSpikeThreshold(double threshold)
{
    spikeLimit = threshold > 0 ? threshold : 0;
    emit SpikeThresholdChanged(spikeLimit);
}

void Editing::SetFillMethod(FillMethod method)
{
    choice.method = method;
    choice.best = false;
    if (methods)
        for (QAction* a : methods->actions())
            a->setChecked(a->objectName() == QStringLiteral("fill_") + fillMethodName(method));
}

void Editing::SetBestMethod(bool best)
{
    choice.best = best;
    if (methods)
        for (QAction* a : methods->actions())
            a->setChecked(best ? a->objectName() == QLatin1String("fill_best")
                               : a->objectName() == QStringLiteral("fill_") + fillMethodName(choice.method));
}

void Editing::SetSourcePath(const QString& path)
{
    source = path;
    saveAs->setEnabled(!path.isEmpty());
}

void Editing::attach()
{
    original = false;
    source.clear();
    saveAs->setEnabled(false);
    takeEditor->Attach(&panel->editableTake().frames);
}

void Editing::edited()
{
    if (original) {
        // An edit made while the original is shown is still seen once it is switched off.
        emit Message(tr("Edited; the graph shows the original tracks until \"Original Tracks\" is switched off"));
        return;
    }
    panel->TakeEdited();
}

QString Editing::units() const
{
    const QString u = panel->take().units;
    return u.isEmpty() ? tr("units") : u;
}

bool Editing::selection(QList<int>& ids, FrameSpan& span)
{
    ids = panel->trackSelection().markers;
    span = FrameSpan{int(panel->selectionFirst()), int(panel->selectionLast())};
    if (ids.isEmpty()) {
        emit Message(tr("Select one or more markers first"));
        return false;
    }
    if (span.isEmpty()) {
        emit Message(tr("Select frames first (Shift + drag in the graph)"));
        return false;
    }
    return true;
}

void Editing::onSelection(void (Editing::*edit)(qint64, qint64))
{
    QList<int> ids;
    FrameSpan span;
    if (selection(ids, span))
        (this->*edit)(span.first, span.last);
}

void Editing::DeleteSelection() { onSelection(&Editing::DeleteFrames); }

void Editing::DeleteFrames(qint64 first, qint64 last)
{
    const int n = takeEditor->Delete(panel->trackSelection().markers, FrameSpan{int(first), int(last)});
    emit Message(tr("Deleted %n sample(s)", nullptr, n));
}

void Editing::DeleteAndFillFrames(qint64 first, qint64 last)
{
    QUndoStack* stack = takeEditor->undoStack();
    stack->beginMacro(tr("Delete and fill"));
    DeleteFrames(first, last);
    FillFrames(first, last);
    stack->endMacro();
}

void Editing::RevertSelection() { onSelection(&Editing::RevertFrames); }

void Editing::RevertFrames(qint64 first, qint64 last)
{
    const int n = takeEditor->Revert(panel->trackSelection().markers, FrameSpan{int(first), int(last)});
    emit Message(tr("Reverted %n sample(s) to the file's", nullptr, n));
}

void Editing::FillSelection() { onSelection(&Editing::FillFrames); }

void Editing::FillFrames(qint64 first, qint64 last)
{
    reportFill(takeEditor->Fill(panel->trackSelection().markers, FrameSpan{int(first), int(last)}, choice, 0));
}

void Editing::reportFill(const FillReport& report)
{
    double sumSq = 0, max = 0;
    int trials = 0;
    for (const FilledGap& g : report.filled)
        if (g.error.known()) {
            sumSq += g.error.rms * g.error.rms;
            max = std::max(max, g.error.max);
            ++trials;
        }
    FillError overall;
    overall.trials = trials;
    overall.rms = trials ? std::sqrt(sumSq / trials) : 0;
    overall.max = max;
    QString text = tr("Filled %n gap(s), ", nullptr, int(report.filled.size())) +
                   tr("%n sample(s)", nullptr, report.samples);
    if (!report.filled.empty())
        text += tr("; estimated error %1").arg(fillErrorText(overall, units()));
    if (!report.problems.isEmpty())
        text += tr("; not filled: %1").arg(report.problems.join(QStringLiteral("; ")));
    emit Message(text);
    emit Filled(report);
}

void Editing::UseSelectedAsDonors()
{
    const QList<int> ids = panel->trackSelection().markers;
    choice.donors.assign(ids.cbegin(), ids.cend());
    emit Message(tr("Donors for pattern and rigid fills: %n marker(s); now select the marker to fill", nullptr,
                    ids.size()));
}

void Editing::ClearDonors()
{
    choice.donors.clear();
    emit Message(tr("Donors are chosen per gap"));
}

void Editing::ShowOriginal(bool on)
{
    original = on;
    panel->ShowSamples(on ? &takeEditor->original() : nullptr);
}

bool Editing::Save(const QString& path, QString& error)
{
    if (source.isEmpty()) {
        error = tr("the built-in take has no file to save from");
        return false;
    }
    const TAV::Frames* take = takeEditor->take();
    if (!take || !C3D::saveEditedTake(source, takeEditor->original(), *take, path, &error))
        return false;
    // The file now holds the edits: reverting returns to them, and later saves compare with them.
    if (QFileInfo(path).canonicalFilePath() == QFileInfo(source).canonicalFilePath())
        takeEditor->KeepAsOriginal();
    emit Message(tr("Saved %1").arg(path));
    return true;
}

void Editing::saveAsAsked()
{
    const QString path = QFileDialog::getSaveFileName(parentWidget, tr("Save the take"), source,
                                                      tr("C3D files (*.c3d *.C3D)"));
    if (path.isEmpty())
        return;
    QString error;
    if (!Save(path, error))
        QMessageBox::warning(parentWidget, tr("Cannot save the take"), error);
}
