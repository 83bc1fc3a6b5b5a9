#pragma once
// The edits of one take with their undo history: delete, revert, fill, delete
// spikes. Each edit is one undo step that keeps only the samples it changed. The
// editor works on a take it does not own, and keeps the take as first attached as
// the original that Revert returns to.
#include "host/edit/fillerror.h"
#include "host/edit/gapfill.h"
#include "host/edit/samplechange.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

class QUndoStack;

struct FillChoice {
    FillMethod method = FillMethod::Linear;
    bool best = false;              // per gap, the method with the lowest estimated error
    std::vector<uint32_t> donors;   // empty: chosen per gap
    bool estimate = true;           // estimate each filled gap's error
};

struct FilledGap {
    Gap gap;
    FillMethod method = FillMethod::Linear;
    FillError error;
};

struct FillReport {
    std::vector<FilledGap> filled;
    QStringList problems; // one line per gap that could not be filled
    int samples = 0;      // samples written
};

class TakeEditor : public QObject {
    Q_OBJECT
public:
    explicit TakeEditor(QObject* parent = nullptr);
    ~TakeEditor() override;

    // Edits take from now on; its present state becomes the original. Clears the history.
    void Attach(TAV::Frames* take);
    TAV::Frames* take() const { return frames; }
    const TAV::Frames& original() const { return orig; }
    QUndoStack* undoStack() const { return stack; }
    // The take as it is now becomes what Revert returns to (after saving over its file).
    void KeepAsOriginal();

    // Each returns the number of samples changed; nothing changed makes no undo step.
    int Delete(const QList<int>& ids, FrameSpan span);
    int Revert(const QList<int>& ids, FrameSpan span);
    // Fills the gaps of ids that overlap span, up to maxGap frames long (0: any).
    FillReport Fill(const QList<int>& ids, FrameSpan span, const FillChoice& choice, int maxGap);
    // Deletes the spikes of ids above threshold; with fill set also fills the holes they leave.
    int DeleteSpikes(const QList<int>& ids, double threshold, const FillChoice* fill);

    // Makes changes one undo step named text (applied now); false when there are none.
    bool Push(const QString& text, SampleChanges changes);

signals:
    // Samples of frames first to last changed (by an edit, undo or redo).
    void Edited(int first, int last);

private:
    friend class SampleEdit;
    void applied(const SampleChanges& changes, bool undo);
    void separateFromOriginal();

    TAV::Frames* frames = nullptr;
    TAV::Frames orig;
    QUndoStack* stack;
};

// Fills one gap as choice says: the fixed method or the best one, with donors
// chosen when none are given. Sets problem when no method could fill it.
FillResult fillAsChosen(const TAV::Frames& take, const Gap& gap, const FillChoice& choice, FilledGap& outcome);
