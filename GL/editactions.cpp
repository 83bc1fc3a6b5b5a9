#include "GL/editactions.h"

#include "GL/glw.h"

#include <QAction>

void addEditActions(GLW* view)
{
    struct Row {
        const char* name;
        const char* key;
        const char* text;
        const char* tip;
    };
    static const Row rows[] = {
        {EditAction::fillGaps, "", "Fill Gaps", "Fill the gaps of the selected tracks in the selection"},
        {EditAction::deleteData, "Delete", "Delete", "Delete the samples of the selected tracks in the selection"},
        {EditAction::revertData, "", "Revert", "Return the selection to the samples the file holds"},
    };
    if (!view)
        return;
    for (const Row& r : rows) {
        if (view->findChild<QAction*>(QString::fromLatin1(r.name)))
            continue;
        QAction* a = view->NewKeyAction(QString::fromLatin1(r.key), r.name, nullptr, nullptr);
        a->setText(QObject::tr(r.text));
        a->setToolTip(QObject::tr(r.tip));
    }
}
