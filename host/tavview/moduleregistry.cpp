#include "host/tavview/moduleregistry.h"

#include <QDir>
#include <QFileInfo>
#include <QLibrary>

namespace {
const char* const moduleFileName = "tavgraph.so";
const char* const graphClass = "TAVGraph";
typedef int (*InitFn)(QObject*);
} // namespace

ModuleRegistry::ModuleRegistry(QObject* parent) : QObject(parent) {}

void ModuleRegistry::Register(const char* kind, const char* className, void* factory)
{
    if (!kind || !className || !factory || qstrcmp(kind, "qobject") != 0)
        return;
    // The module hands its factory over as void*; converting back to the function
    // type it was made from is how the handshake is defined.
    factories.insert(QString::fromUtf8(className), reinterpret_cast<QCreateObjectFn>(factory));
}

bool ModuleRegistry::Has(const QString& className) const { return factories.contains(className); }

QObject* ModuleRegistry::Create(const QString& className, QObject* parent, const char* name) const
{
    const QCreateObjectFn make = factories.value(className, nullptr);
    return make ? make(parent, name) : nullptr;
}

bool ModuleRegistry::Load(const QString& path, QString& error)
{
    if (!QFileInfo(path).isFile()) {
        error = QStringLiteral("cannot load the graph module %1: no such file").arg(path);
        return false;
    }
    // The library stays loaded for the life of the process: the objects it makes
    // run its code, so it is never unloaded.
    QLibrary library(path);
    if (!library.load()) {
        error = QStringLiteral("cannot load the graph module %1: %2").arg(path, library.errorString());
        return false;
    }
    const auto init = reinterpret_cast<InitFn>(library.resolve("init"));
    if (!init) {
        error = QStringLiteral("cannot use %1 as the graph module: it exports no init()").arg(path);
        return false;
    }
    init(this);
    if (!Has(QString::fromLatin1(graphClass))) {
        error = QStringLiteral("cannot use %1 as the graph module: its init() registered no %2")
                    .arg(path, QString::fromLatin1(graphClass));
        return false;
    }
    return true;
}

QStringList moduleCandidates(const QString& executableDir)
{
    const QDir dir(executableDir);
    return {QDir::cleanPath(dir.filePath(QString::fromLatin1(moduleFileName))),
            QDir::cleanPath(dir.filePath(QStringLiteral("../modules/") + QString::fromLatin1(moduleFileName)))};
}

QString findModule(const QString& executableDir)
{
    for (const QString& candidate : moduleCandidates(executableDir))
        if (QFileInfo(candidate).isFile())
            return candidate;
    return QString();
}
