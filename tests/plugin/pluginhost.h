#pragma once
// The module as a host meets it: a library file, one C entry, a factory received
// through "Register", and an object reached only through its meta-object.
#include "GL/glw.h"
#include "Qt/menutree.h"
#include "tav/tavframes.h"
#include "utils/framesinfo.h"

#include <gtest/gtest.h>

#include <QLibrary>
#include <QPointer>

#include <string>

// The host's side of the handshake.
class Registrar : public QObject {
    Q_OBJECT
public:
    std::string calls; // "kind class;" per call
    void* factory = nullptr;

public slots:
    void Register(const char* kind, const char* className, void* f)
    {
        calls += std::string(kind) + " " + className + ";";
        factory = f;
    }
};

class PluginHost {
public:
    typedef int (*InitFn)(QObject*);
    typedef QObject* (*FactoryFn)(QObject*, const char*);

    virtual ~PluginHost() { delete graph.data(); }

    // Loads the library (left loaded: the process keeps meta-types that point into
    // it) and makes "graph" through the factory that init registers.
    void load()
    {
        library.setFileName(TAVGRAPH_PLUGIN);
        ASSERT_TRUE(library.load()) << library.errorString().toStdString();
        init = reinterpret_cast<InitFn>(library.resolve("init"));
        ASSERT_NE(init, nullptr);
        graph = create(nullptr, "graph");
    }
    QObject* create(QObject* parent, const char* name)
    {
        Registrar registrar;
        init(&registrar);
        return reinterpret_cast<FactoryFn>(registrar.factory)(parent, name);
    }
    // A slot by name, as a host calls it; false when the graph has no such slot.
    template <class... Args>
    bool call(const char* slot, Args... args)
    {
        return graph && QMetaObject::invokeMethod(graph, slot, Qt::DirectConnection, args...);
    }

    QLibrary library;
    InitFn init = nullptr;
    QPointer<QObject> graph;
};
