#pragma once
// Plays the take at its own frame rate: the cursor follows the wall clock, so a
// slow repaint drops frames instead of slowing the take down.
#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QTimer>

class GraphPanel;

class Playback : public QObject {
    Q_OBJECT
public:
    explicit Playback(GraphPanel* panel);

    bool isPlaying() const { return timer.isActive(); }

public slots:
    void Play();
    void Stop();
    void Toggle();

signals:
    void PlayingChanged(bool playing);

private slots:
    void tick();

private:
    QPointer<GraphPanel> panel;
    QTimer timer;
    QElapsedTimer clock;
    qint64 framesPlayed = 0;
};
