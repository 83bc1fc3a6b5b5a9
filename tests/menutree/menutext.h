#pragma once
// A built menu as text, for comparisons: "|" for a separator, an action's object
// name with "*" when it is checked, and a sub-menu as name{...}.
#include <QAction>
#include <QMenu>

#include <string>

inline std::string menuText(const QWidget* menu)
{
    std::string text;
    for (const QAction* a : menu->actions()) {
        text += text.empty() ? "" : " ";
        if (a->isSeparator())
            text += "|";
        else if (a->menu())
            text += a->menu()->objectName().toStdString() + "{" + menuText(a->menu()) + "}";
        else
            text += a->objectName().toStdString() + (a->isChecked() ? "*" : "");
    }
    return text;
}
