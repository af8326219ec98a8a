#include "sources/system_profiler.h"

#include "core/texts.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace SystemProfiler {

QString Failure::description() const
{
    if (kind == Kind::processFailed)
        return localized("system_profiler a échoué : ") + detail;
    if (kind == Kind::noAnswer)
        return localized("system_profiler ne répond pas après %1 s pour %2").arg(seconds).arg(detail);
    return localized("Réponse de system_profiler illisible.");
}

std::variant<QList<PropertyDictionary>, Failure> parseAnswer(const ProcessOutput &output, const QString &dataType)
{
    if (!output.started)
        return Failure::processFailed(output.startError);
    if (output.stoppedAfterSeconds)
        return Failure::noAnswer(dataType, *output.stoppedAfterSeconds);
    if (output.exitStatus != 0)
        return Failure::processFailed(localized("code %1 pour %2").arg(output.exitStatus).arg(dataType));

    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(output.standardOutput, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject())
        return Failure::unreadableOutput();
    const QJsonObject top = document.object();
    const auto member = top.constFind(dataType);
    if (member == top.constEnd() || !member->isArray())
        return Failure::unreadableOutput();

    QList<PropertyDictionary> items;
    const QJsonArray array = member->toArray();
    items.reserve(array.size());
    for (const QJsonValue &element : array) {
        if (!element.isObject())
            return Failure::unreadableOutput();
        items.append(PropertyValues::dictionaryFromJson(element.toObject()));
    }
    return items;
}

std::variant<QList<PropertyDictionary>, Failure> items(const ProfilerSource &source, const QString &dataType,
                                                       const std::optional<QString> &detailLevel)
{
    QStringList arguments{u"-json"_s, dataType};
    if (detailLevel)
        arguments << u"-detailLevel"_s << *detailLevel;
    return parseAnswer(source.run(arguments), dataType);
}

} // namespace SystemProfiler
