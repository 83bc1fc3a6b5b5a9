#pragma once
// The factory a module registers with its host: creates an object of type T with a
// Qt parent, named after name when one is given.
#include <QObject>
#include <QString>

typedef QObject* (*QCreateObjectFn)(QObject* parent, const char* name);

template <class T>
QObject* qCreateObject(QObject* parent, const char* name)
{
    T* object = new T(parent);
    if (name)
        object->setObjectName(QString(name));
    return object;
}
