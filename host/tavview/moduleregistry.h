#pragma once
// Loading a graph module as any client does: QLibrary, its exported init(), and a
// registry object whose "Register" slot receives the module's factories. Nothing
// here knows the module's classes; objects are made by class name and driven
// through the meta-object only.
#include "Qt/module.h"

#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>

class ModuleRegistry : public QObject {
    Q_OBJECT
public:
    explicit ModuleRegistry(QObject* parent = nullptr);

    // Loads the library at path and runs its init() with this registry. On failure
    // returns false with one line in error naming the file and the problem.
    bool Load(const QString& path, QString& error);

    // Makes an object of a registered class; null when no module registered it.
    QObject* Create(const QString& className, QObject* parent, const char* name = nullptr) const;
    bool Has(const QString& className) const;

public slots:
    // Called by a module's init(): kind "qobject" registers a QObject factory
    // under className; other kinds are not used by tavview and are ignored.
    void Register(const char* kind, const char* className, void* factory);

private:
    QMap<QString, QCreateObjectFn> factories;
};

// Where tavview looks for the module: beside the executable, then in ../modules
// (the build tree's layout).
QStringList moduleCandidates(const QString& executableDir);
// The first candidate that exists, or an empty string.
QString findModule(const QString& executableDir);
