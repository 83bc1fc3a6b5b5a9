#include "host/edit/takeeditor.h"

#include "host/edit/donors.h"
#include "host/edit/spikes.h"
#include "host/edit/takeedits.h"

#include <QUndoCommand>
#include <QUndoStack>

// One edit as an undo step: the changed samples, replayed either way.
class SampleEdit : public QUndoCommand {
public:
    SampleEdit(TakeEditor* editor, const QString& text, SampleChanges changes)
        : QUndoCommand(text), editor(editor), changes(std::move(changes))
    {
    }
    void redo() override { editor->applied(changes, false); }
    void undo() override { editor->applied(changes, true); }

private:
    TakeEditor* editor;
    SampleChanges changes;
};

TakeEditor::TakeEditor(QObject* parent) : QObject(parent), stack(new QUndoStack(this)) {}

TakeEditor::~TakeEditor() = default;

void TakeEditor::Attach(TAV::Frames* take)
{
    stack->clear();
    frames = take;
    orig = take ? *take : TAV::Frames();
    separateFromOriginal();
}

void TakeEditor::KeepAsOriginal()
{
    if (frames)
        orig = *frames;
    separateFromOriginal();
}

// The take and its original share one array of frame records until one of them
// changes. Copy the array now, while a load or save is waited for anyway: the first
// edit would otherwise copy every record (half a second on a million frames) before
// changing a few samples. The records' sample vectors stay shared until written.
void TakeEditor::separateFromOriginal()
{
    if (frames)
        frames->detach();
}

void TakeEditor::applied(const SampleChanges& changes, bool undo)
{
    if (!frames)
        return;
    applyChanges(*frames, changes, undo);
    const FrameSpan span = changedSpan(changes);
    emit Edited(span.first, span.last);
}

bool TakeEditor::Push(const QString& text, SampleChanges changes)
{
    if (!frames || changes.empty())
        return false;
    stack->push(new SampleEdit(this, text, std::move(changes)));
    return true;
}

int TakeEditor::Delete(const QList<int>& ids, FrameSpan span)
{
    if (!frames)
        return 0;
    SampleChanges c = deletion(*frames, ids, span);
    const int n = int(c.size());
    Push(tr("Delete %n sample(s)", nullptr, n), std::move(c));
    return n;
}

int TakeEditor::Revert(const QList<int>& ids, FrameSpan span)
{
    if (!frames)
        return 0;
    SampleChanges c = reversion(*frames, orig, ids, span);
    const int n = int(c.size());
    Push(tr("Revert %n sample(s)", nullptr, n), std::move(c));
    return n;
}

FillResult fillAsChosen(const TAV::Frames& take, const Gap& gap, const FillChoice& choice, FilledGap& outcome)
{
    const TrackReader reader(take);
    auto donorsFor = [&](FillMethod m) {
        const int needed = donorsNeeded(m);
        if (needed == 0 || !choice.donors.empty())
            return choice.donors;
        return chooseDonors(reader, gap, needed);
    };
    outcome.gap = gap;
    if (!choice.best) {
        const std::vector<uint32_t> donors = donorsFor(choice.method);
        FillResult r = fillGap(reader, gap, choice.method, donors);
        outcome.method = choice.method;
        if (r.ok && choice.estimate)
            outcome.error = estimateFillError(take, gap, choice.method, donors);
        return r;
    }
    FillResult best;
    QStringList problems;
    for (FillMethod m : allFillMethods()) {
        const std::vector<uint32_t> donors = donorsFor(m);
        FillResult r = fillGap(reader, gap, m, donors);
        if (!r.ok) {
            problems << fillMethodName(m) + ": " + r.problem;
            continue;
        }
        const FillError e = estimateFillError(take, gap, m, donors);
        const bool better = !best.ok || (e.known() && (!outcome.error.known() || e.rms < outcome.error.rms));
        if (better) {
            best = std::move(r);
            outcome.method = m;
            outcome.error = e;
        }
    }
    if (!best.ok)
        best.problem = problems.join(QStringLiteral("; "));
    return best;
}

FillReport TakeEditor::Fill(const QList<int>& ids, FrameSpan span, const FillChoice& choice, int maxGap)
{
    FillReport report;
    if (!frames)
        return report;
    SampleChanges all;
    const TrackReader reader(*frames);
    for (int id : ids)
        for (const Gap& gap : gapsOf(reader, uint32_t(id), span, maxGap)) {
            FilledGap outcome;
            const FillResult r = fillAsChosen(*frames, gap, choice, outcome);
            if (!r.ok) {
                report.problems << tr("marker %1, frames %2 to %3: %4")
                                       .arg(id)
                                       .arg(gap.first)
                                       .arg(gap.last)
                                       .arg(r.problem);
                continue;
            }
            const SampleChanges c = filledSamples(*frames, gap, r.positions);
            all.insert(all.end(), c.begin(), c.end());
            report.filled.push_back(outcome);
        }
    report.samples = int(all.size());
    const QString how = choice.best ? tr("best method") : fillMethodName(choice.method);
    Push(tr("Fill %n gap(s) (%1)", nullptr, int(report.filled.size())).arg(how), std::move(all));
    return report;
}

int TakeEditor::DeleteSpikes(const QList<int>& ids, double threshold, const FillChoice* fill)
{
    if (!frames)
        return 0;
    SampleChanges all;
    for (int id : ids)
        for (int f : spikeFrames(*frames, uint32_t(id), threshold)) {
            const SampleChanges c = deletion(*frames, {id}, FrameSpan{f, f});
            all.insert(all.end(), c.begin(), c.end());
        }
    const int n = int(all.size());
    if (!fill) {
        Push(tr("Delete %n spike(s)", nullptr, n), std::move(all));
        return n;
    }
    // Deleted and filled as one step: fill on a scratch copy of the touched frames' state.
    stack->beginMacro(tr("Delete and fill %n spike(s)", nullptr, n));
    QList<std::pair<int, FrameSpan>> holes;
    for (const SampleChange& c : all)
        holes.append({int(c.after.id), FrameSpan{c.frame, c.frame}});
    Push(tr("Delete %n spike(s)", nullptr, n), std::move(all));
    for (const auto& hole : holes)
        Fill({hole.first}, hole.second, *fill, 0);
    stack->endMacro();
    return n;
}
