#include "Qt/menutree.h"

#include "Qt/qproperty.h"

#include <QAction>
#include <QByteArray>

#include <algorithm>
#include <iostream>

// ---- Entry ----

Entry::Entry(const QString& name, const QString& text, int priority, int flag)
    : priority(priority), flag(flag), name(name), text(text), object(nullptr)
{
}

Entry::Entry(const QString& name, QObject* object, int priority, int flag)
    : priority(priority), flag(flag), name(name), object(object)
{
    if (object && object->objectName().isEmpty())
        object->setObjectName(name);
}

Entry::~Entry() = default;

bool Entry::Insert(const Entry& e)
{
    for (int i = 0; i < children.size(); ++i) {
        Entry& c = children[i];
        if (c.priority > e.priority) {
            children.insert(i, e);
            return true;
        }
        if (c.priority != e.priority)
            continue;
        const int order = c.name.compare(e.name);
        if (order > 0) {
            children.insert(i, e);
            return true;
        }
        if (order == 0) {
            if (!e.object)
                return false;
            c.priority = e.priority;
            c.flag = e.flag;
            c.name = e.name;
            c.text = e.text;
            c.icon = e.icon;
            c.object = e.object;
            // Unconditional: QIcon has no equality, and assigning equal lists changes nothing.
            c.children = e.children;
            return false;
        }
    }
    children.append(e);
    return true;
}

bool Entry::Remove(const QString& name)
{
    for (int i = 0; i < children.size(); ++i) {
        if (children.at(i).name == name) {
            children.removeAt(i);
            return true;
        }
    }
    return false;
}

bool Entry::Remove(QObject* object)
{
    for (int i = 0; i < children.size(); ++i) {
        if (children.at(i).object == object) {
            children.removeAt(i);
            return true;
        }
        if (children[i].Remove(object))
            return true;
    }
    return false;
}

bool Entry::Mark()
{
    bool m = object != nullptr;
    for (Entry& c : children)
        m = c.Mark() || m;
    if (m)
        flag |= HoldsObject;
    else
        flag &= ~HoldsObject;
    return m;
}

void Entry::Print(int level) const
{
    std::cout << std::string(size_t(std::max(level, 0)), ' ') << *this << std::endl;
    for (const Entry& c : children)
        c.Print(level + 1);
}

std::ostream& operator<<(std::ostream& os, const Entry& e)
{
    os << "[" << e.name.toLocal8Bit().constData() << ":";
    if (e.object)
        os << e.object->metaObject()->className() << " " << e.object->objectName().toLocal8Bit().constData();
    else
        os << e.text.toLocal8Bit().constData();
    os << ":" << e.priority << ":" << std::hex << e.flag << std::dec << "]";
    return os;
}

// ---- MenuTree ----

namespace {

// A path names its parent before the last "." and the entry after it. Returns false
// for a leading or trailing dot.
bool splitPath(const QString& path, QString& parent, QString& name)
{
    const int i = path.lastIndexOf('.');
    if (i == 0 || path.endsWith('.'))
        return false;
    parent = path.mid(0, std::max(i, 0));
    name = path.mid(i + 1);
    return true;
}

// Counts a change and finds the parent that path names (null for a refused path or
// a missing parent); name receives the last component.
Entry* changedParent(MenuTree& tree, const QString& path, QString& name)
{
    ++tree.update;
    QString parentPath;
    return splitPath(path, parentPath, name) ? tree.Find(parentPath) : nullptr;
}

} // namespace

MenuTree::MenuTree(QObject* parent, const char* name)
    : QObject(parent), root("root", static_cast<QObject*>(nullptr), 0, 0), update(0)
{
    qRegisterMetaType<MenuTree*>("MenuTree*");
    setObjectName(QString::fromUtf8(name));
    setProperty("autoremove", true);
}

MenuTree::~MenuTree() = default;

QObject* MenuTree::Insert(const QString& path, QObject* object, int priority, int flag)
{
    if (path.isEmpty() || !object)
        return nullptr;
    ++update;
    QString parentPath, name;
    if (!splitPath(path, parentPath, name))
        return nullptr;
    // Once per object: a tree filled again for every menu must not pile up connections.
    connect(object, SIGNAL(destroyed(QObject*)), this, SLOT(Remove(QObject*)), Qt::UniqueConnection);
    Entry* parent = Find(parentPath);
    if (!parent)
        return nullptr;
    return parent->Insert(Entry(name, object, priority, flag)) ? object : nullptr;
}

bool MenuTree::Insert(const QString& path, const QString& text, int priority, int flag)
{
    if (path.isEmpty() || text.isEmpty())
        return false;
    QString name;
    Entry* parent = changedParent(*this, path, name);
    return parent && parent->Insert(Entry(name, text, priority, flag));
}

bool MenuTree::Remove(const QString& path)
{
    if (path.isEmpty())
        return false;
    QString name;
    Entry* parent = changedParent(*this, path, name);
    return parent && parent->Remove(name);
}

bool MenuTree::Remove(QObject* object)
{
    ++update;
    const bool removed = root.Remove(object);
    // An object may sit at several paths while its destroyed signal reaches this slot
    // once: on destruction take every entry, so none is left pointing at it.
    if (removed && object && sender() == object)
        while (root.Remove(object)) {
        }
    return removed;
}

Entry* MenuTree::Find(const QString& path)
{
    if (path.isEmpty())
        return &root;
    Entry* e = &root;
    for (const QString& component : path.split('.')) {
        if (component.isEmpty())
            return nullptr;
        Entry* next = nullptr;
        for (Entry& c : e->children) {
            if (c.name == component) {
                next = &c;
                break;
            }
        }
        if (!next)
            return nullptr;
        e = next;
    }
    return e;
}

void MenuTree::Clear() { root.children.clear(); }

int MenuTree::Build(QMenuBar* menu) { return build(menu); }

int MenuTree::Build(QMenu* menu) { return build(menu); }

template <class T>
int MenuTree::build(T* menu)
{
    if (!menu)
        return 0;
    // A menu owns one child of its own; anything else means it was built before.
    const int owned = menu->children().size();
    const bool hasEntries = !root.children.isEmpty();
    if ((owned == 1 && hasEntries) || (owned > 1 && !hasEntries))
        ++update;
    if (update == 0)
        return owned > 1 ? 1 : 0;

    update = 0;
    root.Mark();
    menu->clear();
    for (QMenu* sub : menu->template findChildren<QMenu*>(QString(), Qt::FindDirectChildrenOnly))
        delete sub;

    int count = 0;
    for (const Entry& e : qAsConst(root.children))
        count += add(e, menu);
    return count;
}

template <class T>
int MenuTree::add(const Entry& e, T* menu)
{
    if (e.flag & SeparatorBefore)
        menu->addSeparator();
    int count = 0;
    if (e.object) {
        if (QAction* action = qobject_cast<QAction*>(e.object)) {
            menu->addAction(action);
            count = 1;
        } else if (QMenu* sub = qobject_cast<QMenu*>(e.object)) {
            menu->addMenu(sub);
            count = 1;
        }
    } else {
        if (qProperty<bool>(this, "autoremove") && !(e.flag & HoldsObject))
            return 0;
        QMenu* sub = menu->addMenu(e.text);
        sub->setObjectName(e.name);
        sub->setWindowTitle(e.text);
        if (e.flag & TearOff)
            sub->setTearOffEnabled(true);
        if (e.flag & AddPopup)
            sub->setProperty("addpopup", true);
        if (!e.icon.isNull())
            sub->setIcon(e.icon);
        for (const Entry& c : e.children)
            count += add(c, sub);
    }
    if (e.flag & SeparatorAfter)
        menu->addSeparator();
    return count;
}
