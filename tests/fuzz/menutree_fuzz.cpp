// Random sequences of inserts, removals, destroyed actions, clears and builds on
// one menu tree. A destroyed action must leave the tree: a build that still held
// it would touch freed memory when its menu is walked, which AddressSanitizer
// reports.
#include "Qt/menutree.h"

#include <QAction>
#include <QApplication>
#include <QMenu>

#include <fuzzer/FuzzedDataProvider.h>

#include <iterator>
#include <memory>
#include <vector>

namespace {

const char* const paths[] = {"File/Open", "File/Save", "File/Recent/One", "Edit/Undo", "Edit", "View/Zoom/In",
                             "View/Zoom",  "Help",      "File",            "Edit/Redo", "",     "/",
                             "View//Out",  "Tools/x/y/z"};

// Every action in a built menu, submenus included.
void collect(QMenu* menu, std::vector<QAction*>& out)
{
    for (QAction* a : menu->actions()) {
        if (a->menu())
            collect(a->menu(), out);
        else if (!a->isSeparator())
            out.push_back(a);
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Never destroyed: the platform's objects stay reachable, so the leak check
    // at exit reports only what the inputs leaked.
    static QApplication* app = new QApplication(*argc, *argv);
    return app ? 0 : 1;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    FuzzedDataProvider in(data, size);
    MenuTree tree;
    std::vector<std::unique_ptr<QAction>> actions;
    for (int i = 0; i < 6; ++i)
        actions.emplace_back(new QAction(QStringLiteral("a%1").arg(i)));
    const auto pick = [&] { return actions[in.ConsumeIntegralInRange<size_t>(0, actions.size() - 1)].get(); };
    const auto path = [&] { return QString::fromLatin1(paths[in.ConsumeIntegralInRange<size_t>(0, std::size(paths) - 1)]); };

    // Path, position, then flags: in one order whatever order a compiler evaluates
    // arguments in, so that the replay reads each kept input as the fuzzer did.
    const auto insert = [&](const auto& item) {
        const QString where = path();
        const int position = in.ConsumeIntegralInRange(-3, 3);
        tree.Insert(where, item, position, in.ConsumeIntegralInRange(0, 15));
    };

    while (in.remaining_bytes() > 0) {
        switch (in.ConsumeIntegralInRange(0, 6)) {
        case 0:
            if (QAction* a = pick())
                insert(a);
            break;
        case 1:
            insert(QStringLiteral("Text"));
            break;
        case 2:
            tree.Remove(path());
            break;
        case 3:
            tree.Remove(static_cast<QObject*>(pick()));
            break;
        case 4:
            actions[in.ConsumeIntegralInRange<size_t>(0, actions.size() - 1)].reset();
            break;
        case 5:
            tree.Clear();
            break;
        case 6: {
            QMenu menu;
            tree.Build(&menu);
            std::vector<QAction*> shown;
            collect(&menu, shown);
            for (QAction* a : shown)
                a->text();
            break;
        }
        }
    }
    return 0;
}
