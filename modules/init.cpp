// The module's only exported entry: hands the host the factory of the graph object.
#include "modules/tavgraph.h"

extern "C" Q_DECL_EXPORT int init(QObject* lib)
{
    if (!lib)
        return 1;
    const char* kind = "qobject";
    const char* className = "TAVGraph";
    void* factory = reinterpret_cast<void*>(&qCreateObject<TAVGraph>);
    // The host files the factory under the class name; whether it accepted it is its business.
    QMetaObject::invokeMethod(lib, "Register", Qt::AutoConnection, Q_ARG(const char*, kind),
                              Q_ARG(const char*, className), Q_ARG(void*, factory));
    return 1;
}
