#pragma once
// tavview's side of editing a take: the view's "delete_data", "revert_data" and
// "applytool" actions, the Edit menu, undo and redo, the unedited data while the
// graph's "Original Tracks" is on, and saving. Edits change the panel's take in
// place and the panel then hands the graph the changed tracks.
#include "host/edit/takeeditor.h"

#include <QObject>
#include <QString>

class GraphPanel;
class QAction;
class QActionGroup;
class QMenu;
class QWidget;

class Editing : public QObject {
    Q_OBJECT
public:
    Editing(GraphPanel* panel, QWidget* dialogParent);

    TakeEditor* editor() const { return takeEditor; }
    // The file the shown take was read from; empty for the built-in take, which
    // cannot be saved.
    void SetSourcePath(const QString& path);
    const QString& sourcePath() const { return source; }

    void BuildMenu(QMenu* edit);
    QAction* saveAsAction() const { return saveAs; }
    const FillChoice& fillChoice() const { return choice; }
    void SetFillMethod(FillMethod method);
    void SetBestMethod(bool best);
    bool showingOriginal() const { return original; }
    double spikeThreshold() const { return spikeLimit; }

    bool Save(const QString& path, QString& error);

public slots:
    void DeleteSelection();
    void RevertSelection();
    void FillSelection();
    // The markers selected now are followed by later pattern and rigid fills.
    void UseSelectedAsDonors();
    void ClearDonors();
    void ShowOriginal(bool on);
    // Frames first to last of the selected tracks, as the areas panel asks.
    void DeleteFrames(qint64 first, qint64 last);
    void RevertFrames(qint64 first, qint64 last);
    void FillFrames(qint64 first, qint64 last);
    void DeleteAndFillFrames(qint64 first, qint64 last);
    // Samples accelerating faster than threshold (the take's units per frame²) are
    // listed as spikes; 0 lists none.
    void SetSpikeThreshold(double threshold);

signals:
    // A line for the status bar.
    void Message(const QString& text);
    // Gaps filled by the last fill, with their error estimates.
    void Filled(const FillReport& report);
    void SpikeThresholdChanged(double threshold);

private slots:
    void attach();
    void edited();
    void saveAsAsked();
    void spikeThresholdAsked();

private:
    bool selection(QList<int>& ids, FrameSpan& span);
    // Runs edit on the selected frames, or says what to select first.
    void onSelection(void (Editing::*edit)(qint64, qint64));
    void connectViewAction(const char* name, void (Editing::*slot)());
    void reportFill(const FillReport& report);
    QString units() const;

    GraphPanel* panel;
    QWidget* parentWidget;
    TakeEditor* takeEditor;
    QString source;
    FillChoice choice;
    bool original = false;
    double spikeLimit = 0;
    QAction* saveAs;
    QActionGroup* methods = nullptr;
};

// "RMS 1.2 mm, max 3.4 mm" or "unknown" for an estimate without trials.
QString fillErrorText(const FillError& error, const QString& units);
