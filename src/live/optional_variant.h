#pragma once

#include <QVariant>

#include <optional>

// A value for a Qt property: the value itself, or an invalid variant (undefined in QML) for none.
template <typename T>
QVariant variantOf(const std::optional<T> &value)
{
    return value ? QVariant::fromValue(*value) : QVariant();
}
