#pragma once
// A tree of menu entries addressed by dotted paths and ordered by priority, built
// into Qt menus and menu bars on demand. Entries vanish when their object dies.
#include <QIcon>
#include <QList>
#include <QMenu>
#include <QMenuBar>
#include <QObject>
#include <QString>

#include <ostream>

struct Entry;
typedef QList<Entry> Entries;

// Flag bits of an entry.
enum EntryFlag : int {
    SeparatorBefore = 0x1,
    SeparatorAfter = 0x2,
    TearOff = 0x4,
    AddPopup = 0x8,
    HoldsObject = 0x100, // maintained by Mark()
};

struct Entry {
    int priority;
    int flag;
    QString name;
    QString text;
    QIcon icon;
    QObject* object; // not owned
    Entries children;

    Entry(const QString& name, const QString& text, int priority = 0, int flag = 0);
    Entry(const QString& name, QObject* object, int priority = 0, int flag = 0);
    ~Entry();

    bool Insert(const Entry& e);
    bool Remove(const QString& name);
    bool Remove(QObject* object);
    bool Mark();
    void Print(int level) const;
};

std::ostream& operator<<(std::ostream& os, const Entry& e);

class MenuTree : public QObject {
    Q_OBJECT
public:
    Entry root;
    int update; // change counter; 0 after a rebuild

    explicit MenuTree(QObject* parent = nullptr, const char* name = nullptr);
    ~MenuTree() override;

public slots:
    QObject* Insert(const QString& path, QObject* object, int priority = 0, int flag = 0);
    bool Insert(const QString& path, const QString& text, int priority = 0, int flag = 0);
    bool Remove(const QString& path);
    bool Remove(QObject* object);
    Entry* Find(const QString& path);
    void Clear();
    int Build(QMenuBar* menu);
    int Build(QMenu* menu);

private:
    template <class T>
    int build(T* menu);
    template <class T>
    int add(const Entry& e, T* menu);
};

Q_DECLARE_METATYPE(MenuTree*)
