// Filling and reading the client's arrays from tests, as the client would.
#pragma once

#include <initializer_list>
#include <vector>

#include "ClientData/ClientBoundary.h"

template <class T>
std::vector<T> VectorOf(const CClientArray<T>& set)
{
    return std::vector<T>(set.begin(), set.end());
}

template <class T>
struct TypeOf {
    using type = T;
};

template <class T>
void ArrayFill(CClientArray<T>& set, std::initializer_list<typename TypeOf<T>::type> values)
{
    for (const T& value : values) set.PushBack(value);
}
