#pragma once
// An ordered map from an integer id to a value, with a look-up that reports presence.
#include <map>

template <class T>
class IdMap : public std::map<int, T> {
public:
    using std::map<int, T>::find;

    bool find(int id, T& value) const
    {
        const auto it = std::map<int, T>::find(id);
        if (it == this->end())
            return false;
        value = it->second;
        return true;
    }
};
