#include "sources/mac_models.h"

#include "sources/data_files.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace MacModels {

const QHash<QString, Model> &table()
{
    // Intel models keep generic names without a chip suffix on purpose.
    static const QHash<QString, Model> models{
        {u"Mac17,6"_s, {u"MacBook Pro 16″ M5 Pro/Max"_s, 2026}},
        {u"Mac17,8"_s, {u"MacBook Pro 16″ M5 Pro/Max"_s, 2026}},
        {u"Mac17,7"_s, {u"MacBook Pro 14″ M5 Pro/Max"_s, 2026}},
        {u"Mac17,9"_s, {u"MacBook Pro 14″ M5 Pro/Max"_s, 2026}},
        {u"Mac17,2"_s, {u"MacBook Pro 14″ M5"_s, 2025}},
        {u"Mac16,7"_s, {u"MacBook Pro 16″ M4 Pro/Max"_s, 2024}},
        {u"Mac16,5"_s, {u"MacBook Pro 16″ M4 Pro/Max"_s, 2024}},
        {u"Mac16,6"_s, {u"MacBook Pro 14″ M4 Pro/Max"_s, 2024}},
        {u"Mac16,8"_s, {u"MacBook Pro 14″ M4 Pro/Max"_s, 2024}},
        {u"Mac16,1"_s, {u"MacBook Pro 14″ M4"_s, 2024}},
        {u"Mac15,3"_s, {u"MacBook Pro 14″ M3"_s, 2023}},
        {u"Mac15,6"_s, {u"MacBook Pro 14″ M3 Pro/Max"_s, 2023}},
        {u"Mac15,8"_s, {u"MacBook Pro 14″ M3 Pro/Max"_s, 2023}},
        {u"Mac15,10"_s, {u"MacBook Pro 14″ M3 Pro/Max"_s, 2023}},
        {u"Mac15,7"_s, {u"MacBook Pro 16″ M3 Pro/Max"_s, 2023}},
        {u"Mac15,9"_s, {u"MacBook Pro 16″ M3 Pro/Max"_s, 2023}},
        {u"Mac15,11"_s, {u"MacBook Pro 16″ M3 Pro/Max"_s, 2023}},
        {u"Mac14,5"_s, {u"MacBook Pro 14″ M2 Pro/Max"_s, 2023}},
        {u"Mac14,9"_s, {u"MacBook Pro 14″ M2 Pro/Max"_s, 2023}},
        {u"Mac14,6"_s, {u"MacBook Pro 16″ M2 Pro/Max"_s, 2023}},
        {u"Mac14,10"_s, {u"MacBook Pro 16″ M2 Pro/Max"_s, 2023}},
        {u"Mac14,7"_s, {u"MacBook Pro 13″ M2"_s, 2022}},
        {u"MacBookPro18,1"_s, {u"MacBook Pro 16″ M1 Pro/Max"_s, 2021}},
        {u"MacBookPro18,2"_s, {u"MacBook Pro 16″ M1 Pro/Max"_s, 2021}},
        {u"MacBookPro18,3"_s, {u"MacBook Pro 14″ M1 Pro/Max"_s, 2021}},
        {u"MacBookPro18,4"_s, {u"MacBook Pro 14″ M1 Pro/Max"_s, 2021}},
        {u"MacBookPro17,1"_s, {u"MacBook Pro 13″ M1"_s, 2020}},
        {u"MacBookPro16,1"_s, {u"MacBook Pro 16″"_s, 2019}},
        {u"MacBookPro16,4"_s, {u"MacBook Pro 16″"_s, 2019}},
        {u"MacBookPro16,2"_s, {u"MacBook Pro 13″"_s, 2020}},
        {u"MacBookPro16,3"_s, {u"MacBook Pro 13″"_s, 2020}},
        {u"MacBookPro15,1"_s, {u"MacBook Pro 15″"_s, 2018}},
        {u"MacBookPro15,3"_s, {u"MacBook Pro 15″"_s, 2019}},
        {u"MacBookPro15,2"_s, {u"MacBook Pro 13″"_s, 2019}},
        {u"MacBookPro15,4"_s, {u"MacBook Pro 13″"_s, 2019}},
        {u"MacBookPro14,1"_s, {u"MacBook Pro 13″"_s, 2017}},
        {u"MacBookPro14,2"_s, {u"MacBook Pro 13″"_s, 2017}},
        {u"MacBookPro14,3"_s, {u"MacBook Pro 15″"_s, 2017}},
        {u"MacBookPro13,1"_s, {u"MacBook Pro 13″"_s, 2016}},
        {u"MacBookPro13,2"_s, {u"MacBook Pro 13″"_s, 2016}},
        {u"MacBookPro13,3"_s, {u"MacBook Pro 15″"_s, 2016}},
        {u"MacBookPro12,1"_s, {u"MacBook Pro 13″ Retina"_s, 2015}},
        {u"MacBookPro11,4"_s, {u"MacBook Pro 15″ Retina"_s, 2015}},
        {u"MacBookPro11,5"_s, {u"MacBook Pro 15″ Retina"_s, 2015}},
        {u"Mac17,3"_s, {u"MacBook Air 13″ M5"_s, 2026}},
        {u"Mac17,4"_s, {u"MacBook Air 15″ M5"_s, 2026}},
        {u"Mac17,5"_s, {u"MacBook Neo A18 Pro"_s, 2026}},
        {u"Mac16,12"_s, {u"MacBook Air 13″ M4"_s, 2025}},
        {u"Mac16,14"_s, {u"MacBook Air 15″ M4"_s, 2025}},
        {u"Mac16,13"_s, {u"MacBook Air 15″ M4"_s, 2025}},
        {u"Mac15,12"_s, {u"MacBook Air 13″ M3"_s, 2024}},
        {u"Mac15,13"_s, {u"MacBook Air 15″ M3"_s, 2024}},
        {u"Mac14,15"_s, {u"MacBook Air 15″ M2"_s, 2023}},
        {u"Mac14,2"_s, {u"MacBook Air 13″ M2"_s, 2022}},
        {u"MacBookAir10,1"_s, {u"MacBook Air 13″ M1"_s, 2020}},
        {u"MacBookAir9,1"_s, {u"MacBook Air 13″"_s, 2020}},
        {u"MacBookAir8,1"_s, {u"MacBook Air 13″"_s, 2018}},
        {u"MacBookAir8,2"_s, {u"MacBook Air 13″"_s, 2019}},
        {u"MacBookAir7,2"_s, {u"MacBook Air 13″"_s, 2015}},
        {u"MacBookAir7,1"_s, {u"MacBook Air 11″"_s, 2015}},
        {u"MacBook10,1"_s, {u"MacBook 12″"_s, 2017}},
        {u"MacBook9,1"_s, {u"MacBook 12″"_s, 2016}},
        {u"MacBook8,1"_s, {u"MacBook 12″"_s, 2015}},
        {u"Mac16,11"_s, {u"Mac mini M4 Pro"_s, 2024}},
        {u"Mac16,10"_s, {u"Mac mini M4"_s, 2024}},
        {u"Mac14,3"_s, {u"Mac mini M2"_s, 2023}},
        {u"Mac14,12"_s, {u"Mac mini M2 Pro"_s, 2023}},
        {u"Macmini9,1"_s, {u"Mac mini M1"_s, 2020}},
        {u"Macmini8,1"_s, {u"Mac mini"_s, 2018}},
        {u"Mac16,3"_s, {u"iMac 24″ M4"_s, 2024}},
        {u"Mac16,2"_s, {u"iMac 24″ M4"_s, 2024}},
        {u"Mac15,4"_s, {u"iMac 24″ M3"_s, 2023}},
        {u"Mac15,5"_s, {u"iMac 24″ M3"_s, 2023}},
        {u"iMac21,1"_s, {u"iMac 24″ M1"_s, 2021}},
        {u"iMac21,2"_s, {u"iMac 24″ M1"_s, 2021}},
        {u"iMac20,1"_s, {u"iMac 27″"_s, 2020}},
        {u"iMac20,2"_s, {u"iMac 27″"_s, 2020}},
        {u"iMac19,1"_s, {u"iMac 27″"_s, 2019}},
        {u"iMac18,3"_s, {u"iMac 27″"_s, 2017}},
        {u"Mac14,13"_s, {u"Mac Studio M2 Max"_s, 2023}},
        {u"Mac14,14"_s, {u"Mac Studio M2 Ultra"_s, 2023}},
        {u"Mac13,1"_s, {u"Mac Studio M1 Max"_s, 2022}},
        {u"Mac13,2"_s, {u"Mac Studio M1 Ultra"_s, 2022}},
        {u"Mac16,9"_s, {u"Mac Studio M4 Max"_s, 2025}},
        {u"Mac15,14"_s, {u"Mac Studio M3 Ultra"_s, 2025}},
        {u"Mac14,8"_s, {u"Mac Pro M2 Ultra"_s, 2023}},
    };
    return models;
}

std::optional<QHash<QString, Model>> decodeOverrides(const QByteArray &json)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject())
        return std::nullopt;
    QHash<QString, Model> models;
    const QJsonObject top = document.object();
    for (auto it = top.begin(); it != top.end(); ++it) {
        if (!it->isObject())
            return std::nullopt;
        const QJsonObject entry = it->toObject();
        const QJsonValue name = entry.value(u"name"_s);
        const QJsonValue year = entry.value(u"year"_s);
        // The year must be a whole number that fits an integer.
        if (!name.isString() || !year.isDouble() || year.toVariant().typeId() != QMetaType::LongLong)
            return std::nullopt;
        const qint64 yearValue = year.toInteger();
        if (yearValue < std::numeric_limits<int>::min() || yearValue > std::numeric_limits<int>::max())
            return std::nullopt;
        models.insert(it.key(), Model{name.toString(), int(yearValue)});
    }
    return models;
}

QString overridesPath()
{
    const QStringList folders = QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation);
    const QString base = folders.isEmpty() ? QDir::homePath() : folders.first();
    return base + u"/Quillon/models.json"_s;
}

const QHash<QString, Model> &overrides()
{
    static const QHash<QString, Model> models = [] {
        // A file larger than any honest overrides list, or no file at all, is not read.
        const std::variant<QByteArray, QString> bytes = DataFiles::read(overridesPath(), 16 * 1024 * 1024);
        const QByteArray *json = std::get_if<QByteArray>(&bytes);
        return json ? decodeOverrides(*json).value_or(QHash<QString, Model>()) : QHash<QString, Model>();
    }();
    return models;
}

std::optional<Model> model(const QString &identifier)
{
    const auto overridden = overrides().constFind(identifier);
    if (overridden != overrides().constEnd())
        return *overridden;
    const auto builtIn = table().constFind(identifier);
    if (builtIn != table().constEnd())
        return *builtIn;
    return std::nullopt;
}

std::optional<QString> commercialName(const QString &identifier)
{
    const std::optional<Model> found = model(identifier);
    if (!found)
        return std::nullopt;
    return found->name + u", "_s + QString::number(found->year);
}

} // namespace MacModels
