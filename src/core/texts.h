#pragma once

#include <QCoreApplication>
#include <QString>

// User-visible French texts go through Qt's translation call with the French text
// itself as the source text; without a translator the French text comes back unchanged.
inline QString localized(const char *frenchText)
{
    return QCoreApplication::translate("Quillon", frenchText);
}

// The missing-value mark: an em dash alone.
inline QString missingValueMark()
{
    return QStringLiteral("—");
}
