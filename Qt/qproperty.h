#pragma once
// Typed reads of Qt dynamic properties: an absent or unconvertible property reads
// as the type's zero value; ok (when given) says whether it existed and converted.
#include <QObject>
#include <QVariant>

template <class T>
T qProperty(const QObject* o, const char* name, bool* ok = nullptr)
{
    if (!o)
        return T();
    QVariant v = o->property(name);
    if (v.userType() == qMetaTypeId<T>()) {
        if (ok)
            *ok = true;
        return v.value<T>();
    }
    const bool converted = v.isValid() && v.convert(qMetaTypeId<T>());
    if (ok)
        *ok = converted;
    return converted ? v.value<T>() : T();
}
