#include "host/tavview/preferences.h"

#include "modules/core/contract.h"

#include <QFileInfo>

QStringList rememberedGraphProperties()
{
    QStringList names;
    for (const char* name : {GraphProperty::enableMarkers, GraphProperty::enableRigids, GraphProperty::enableFill,
                             GraphProperty::enableRGB, GraphProperty::axisMask, GraphProperty::drawTC,
                             GraphProperty::drawRBAxisAngle})
        names << QLatin1String(name);
    return names;
}

QStringList withRecentFile(const QStringList& files, const QString& path, int max)
{
    const QString full = QFileInfo(path).absoluteFilePath();
    QStringList out{full};
    for (const QString& f : files)
        if (f != full && out.size() < max)
            out.append(f);
    return out;
}

Preferences readPreferences(QSettings& settings)
{
    Preferences p;
    p.geometry = settings.value(QStringLiteral("window/geometry")).toByteArray();
    p.windowState = settings.value(QStringLiteral("window/state")).toByteArray();
    p.secondsAxis = settings.value(QStringLiteral("view/secondsAxis"), false).toBool();
    p.recentFiles = settings.value(QStringLiteral("files/recent")).toStringList();
    settings.beginGroup(QStringLiteral("graph"));
    for (const QString& name : rememberedGraphProperties())
        if (settings.contains(name))
            p.graph.insert(name, settings.value(name));
    settings.endGroup();
    return p;
}

void writePreferences(QSettings& settings, const Preferences& p)
{
    settings.setValue(QStringLiteral("window/geometry"), p.geometry);
    settings.setValue(QStringLiteral("window/state"), p.windowState);
    settings.setValue(QStringLiteral("view/secondsAxis"), p.secondsAxis);
    settings.setValue(QStringLiteral("files/recent"), p.recentFiles);
    settings.beginGroup(QStringLiteral("graph"));
    for (auto it = p.graph.cbegin(); it != p.graph.cend(); ++it)
        settings.setValue(it.key(), it.value());
    settings.endGroup();
    settings.sync();
}
