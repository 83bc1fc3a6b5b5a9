#pragma once
// The time graph: frames along x, the coordinates of the selected markers and rigid
// bodies along y, shaded runs of sample quality beneath, and a frame cursor. A host
// reaches it only through init(), the "Register" handshake and the meta-object.
//
// The view, window, mouse and menu-tree headers are included whole (not forward
// declared): the slots' pointer arguments register as meta-types, which needs the
// complete types where moc's output is compiled.
#include "GL/glw.h"
#include "GL/glwindow.h"
#include "Qt/menutree.h"
#include "Qt/module.h"
#include "Qt/qproperty.h"
#include "math/vector.h"
#include "tav/tavframes.h"
#include "tools/mouse.h"
#include "utils/framesinfo.h"
#include "utils/idmap.h"
#include "utils/regions.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QRectF>
#include <QString>
#include <QVariant>

#include <memory>

class FastPaintCache;
class TrackIndexes;

extern "C" Q_DECL_EXPORT int init(QObject* lib);

class TAVGraph : public QObject {
    Q_OBJECT
public:
    explicit TAVGraph(QObject* parent = nullptr, const char* name = nullptr);
    ~TAVGraph() override;

    // Typed access to the dynamic properties. These hide QObject's property() and
    // setProperty(); the using declarations bring Qt's back.
    using QObject::property;
    using QObject::setProperty;
    template <class T>
    T property(const char* name, bool* ok = nullptr) const
    {
        return qProperty<T>(this, name, ok);
    }
    template <class T>
    bool setProperty(const char* name, const T& v)
    {
        return QObject::setProperty(name, QVariant::fromValue<T>(v));
    }

    // Fields, in declaration order.
    QPointer<GLW> glw;
    qint64 selectStart = 0;
    qint64 selectEnd = 0;
    qint64 offsetX = 0;
    QList<int> markers;
    QList<int> rigids;
    QList<int> cameras;
    QList<qint64> timeLut;
    IdMap<Vector> trackOffsets;
    IdMap<Vector> rbtrackOffsets;
    RegionsSet regionsSet;
    Regions regions;
    TAV::Frames tracks;
    FramesInfo framesInfo;
    double period = 1.0;

    // The next fast paint walks the take even if nothing changed: for measuring it.
    void forgetFastPaint();

signals:
    void SelectionChanged(qint64, qint64);
    void RegionChanged(qint64, qint64);
    void SelectType(int);
    void Seek(qint64, int);
    void Select(QRectF);
    void ClearSelect(GLW* glw, bool state);
    void UpdateSelect(qint64, qint64);
    void Delete();
    void Revert();
    void EnableOriginal(bool);
    void ApplyTool();

public slots:
    void SetFramesInfo(FramesInfo* info);
    void SetTracks(TAV::Frames* f);
    void SetTrackSelection(const QList<int>& selected, const QString& name);
    void Connected(GLW* glw);
    void Init();
    void Pick2D(GLW* glw);
    void Draw2D(GLW* glw);
    void Range2D(QRectF* rect, int mode);
    void InitContextMenuTree(GLW* glw, MenuTree* mt);
    void ModifyRegion(bool state);
    void DataChange();
    void ClearTrackOffsets();
    void UpdateTrackOffsets();
    void Selected(QRectF r);
    int MoveCursor(Mouse* mouse, bool state);
    void GLWUpdate(FramesInfo* s);
    void Redraw(bool flag = true);
    void NextAOI();
    void PrevAOI();
    void ToggleDrawOriginal(bool b);
    void ToggleDrawTC(bool b);
    void EnableMarkers(bool b);
    void EnableRigids(bool b);
    void ToggleDrawAngles(bool b);
    void SelectRegion();
    void ExpandSelect();
    void ContractSelect();

private:
    // The connected view, when it and its GL window are still alive.
    GLW* liveView() const;
    GLWindow* liveWindow() const;
    // Adds 1 to the repaint counter of the connected view's window, if any.
    void requestRepaint();

    void updateRegions();
    void mergeRegions();
    void boundSelectState(size_t frames);
    void selectRegionAt(int current);
    // NextAOI and PrevAOI: move the view to the next or previous run of interest.
    void jumpToRun(bool forward);
    // Proposes a range to the host: a region edit when "modifyRegion" is set, else a selection.
    void proposeRange(qint64 start, qint64 end);
    int rangeYTr(int mode, float& miny, float& maxy, float minx, float maxx, const TAV::Frames& tracks);

    QAction* init_action(const char* text, const char* tip, QAction* a, bool checkable,
                         bool applicationShortcut = false);
    QAction* insert_action(QObject* o, MenuTree* mt, const QString& action, const QString& path, int order,
                           bool checked, bool sep);

    void drawTrackPoints(GLW* glw);
    void drawTrackLines(GLW* glw);
    template <class T>
    void drawTrackLines(const QVector<T>& data, float left, float right, int channels, int type);
    void drawRegions(GLW* glw);
    void drawCursor(GLW* glw);

    std::unique_ptr<FastPaintCache> fastPaint; // the last fast paint, for cursor-only repaints
    std::unique_ptr<TrackIndexes> trackIndexes; // what fast paints know of the tracks' samples
};
