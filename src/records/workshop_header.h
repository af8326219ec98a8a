#pragma once

#include <QString>

#include <optional>

// The workshop printed at the head of an exported report.
struct WorkshopHeader
{
    // The workshop's name, trimmed, never empty; the report prints it in upper case.
    QString name;
    // The phone and the address, trimmed, empty ones left out, joined by " · ".
    std::optional<QString> details;

    friend bool operator==(const WorkshopHeader &, const WorkshopHeader &) = default;
};
