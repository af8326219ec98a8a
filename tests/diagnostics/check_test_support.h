#pragma once

// Hand-made records for the rules, and a check written as one line that prints well when
// a comparison fails.

#include "core/battery_info.h"
#include "core/built_in_components.h"
#include "core/device_node.h"
#include "core/storage_volume.h"
#include "diagnostics/diagnostics_report.h"

#include <QMetaType>
#include <QStringList>

#include <optional>

Q_DECLARE_METATYPE(HardwareCheck)

namespace CheckTest {

using namespace Qt::StringLiterals;

inline QString statusName(CheckStatus status)
{
    static const char *const names[] = {"ok", "attention", "alerte", "info", "nonApplicable"};
    return QString::fromLatin1(names[int(status)]);
}

// "status | summary | measurement", followed by " | progress | caption" when the check has
// either; "-" stands for nothing.
inline QString verdict(const HardwareCheck &check)
{
    QStringList parts{statusName(check.status), check.summary, check.measurement.value_or(u"-"_s)};
    if (check.progress || check.caption)
        parts << (check.progress ? QString::number(*check.progress) : u"-"_s) << check.caption.value_or(u"-"_s);
    return parts.join(u" | "_s);
}

// Where a click and the live readings lead: "hardware lidAngle", "battery", "-" for no section.
inline QString place(const HardwareCheck &check)
{
    static const char *const live[] = {"lidAngle", "processorLoad", "processorTemperature"};
    QString text = check.section ? AppSections::rawValue(*check.section) : u"-"_s;
    return check.live ? text + u' ' + QLatin1StringView(live[int(*check.live)]) : text;
}

// "title | symbol | place", then " | highlighted" for a large tile.
inline QString frame(const HardwareCheck &check)
{
    return QStringList{check.title, check.symbol, place(check)}.join(u" | "_s) + (check.isHighlighted ? u" | highlighted"_s : QString());
}

// The nodes of a section written in one line: nodes apart with ",", children in brackets, a
// "~" before a subtitle, and marks at the end of a node: "+" connected, "-" disconnected, "!"
// warning, none for neutral, "*" built in, "#" the port symbol. "GPU[Color LCD+, LG-]".
inline QList<DeviceNode> parseNodes(QStringView text, qsizetype &at)
{
    QList<DeviceNode> list;
    while (at < text.size() && text[at] != u']') {
        qsizetype end = at;
        while (end < text.size() && !QStringView(u"[],").contains(text[end]))
            ++end;
        QString token = text.sliced(at, end - at).trimmed().toString();
        DeviceNode &made = list.emplace_back();
        for (QChar mark; !token.isEmpty() && QStringView(u"+-!*#").contains(mark = token.back()); token.chop(1)) {
            if (mark == u'*')
                made.isBuiltIn = true;
            else if (mark == u'#')
                made.symbol = u"bolt.horizontal.circle"_s;
            else // connected, disconnected and warning are the first three statuses
                made.status = DeviceStatus(QStringView(u"+-!").indexOf(mark));
        }
        made.name = token.section(u'~', 0, 0);
        if (token.contains(u'~'))
            made.subtitle = token.section(u'~', 1);
        at = end;
        if (at < text.size() && text[at] == u'[') {
            made.children = parseNodes(text, ++at);
            ++at; // the closing bracket
        }
        if (at < text.size() && text[at] == u',')
            ++at;
    }
    return list;
}

inline QList<DeviceNode> section(QStringView text)
{
    qsizetype at = 0;
    return parseNodes(text, at);
}

inline BuiltInComponents::Component present(std::optional<QString> detail = std::nullopt)
{
    return {true, std::move(detail), {}};
}

} // namespace CheckTest
