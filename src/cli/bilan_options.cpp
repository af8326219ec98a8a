#include "cli/bilan_options.h"

#include <QDate>

using namespace Qt::StringLiterals;

namespace BilanCommandLine {

namespace {

struct ValueOption
{
    QString name;
    std::optional<QString> BilanOptions::*field;
};

const QList<ValueOption> &valueOptions()
{
    static const QList<ValueOption> options{
        {u"--capture"_s, &BilanOptions::capture},
        {u"--output"_s, &BilanOptions::output},
        {u"--workshop-name"_s, &BilanOptions::workshopName},
        {u"--workshop-phone"_s, &BilanOptions::workshopPhone},
        {u"--workshop-address"_s, &BilanOptions::workshopAddress},
        {u"--save-capture"_s, &BilanOptions::saveCapture},
        {u"--search"_s, &BilanOptions::search},
        {u"--level"_s, &BilanOptions::level},
        {u"--from"_s, &BilanOptions::from},
        {u"--to"_s, &BilanOptions::to},
    };
    return options;
}

const ValueOption *findValueOption(const QString &name)
{
    for (const ValueOption &option : valueOptions()) {
        if (option.name == name)
            return &option;
    }
    return nullptr;
}

bool *flagField(BilanOptions &options, const QString &name)
{
    if (name == u"--record"_s)
        return &options.record;
    if (name == u"--journal-csv"_s)
        return &options.journalCsv;
    if (name == u"--version"_s)
        return &options.version;
    if (name == u"--help"_s || name == u"-h"_s)
        return &options.help;
    return nullptr;
}

} // namespace

std::variant<BilanOptions, QString> parse(const QStringList &arguments)
{
    BilanOptions options;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        QString name = arguments.at(i);
        std::optional<QString> inlineValue;
        // "--output=FILE" is the same as "--output FILE".
        if (const qsizetype equals = name.indexOf(u'='); name.startsWith(u"--"_s) && equals > 0) {
            inlineValue = name.mid(equals + 1);
            name.truncate(equals);
        }
        if (bool *flag = flagField(options, name); flag && !inlineValue) {
            *flag = true;
            continue;
        }
        const ValueOption *option = findValueOption(name);
        if (!option) {
            if (!name.startsWith(u'-'))
                return u"argument inattendu : « %1 » (voir --help)."_s.arg(arguments.at(i));
            return u"option inconnue : %1 (voir --help)."_s.arg(name);
        }
        if (!inlineValue) {
            if (i + 1 >= arguments.size())
                return u"l’option %1 attend une valeur."_s.arg(name);
            inlineValue = arguments.at(++i);
        }
        if (options.*(option->field))
            return u"l’option %1 est donnée deux fois."_s.arg(name);
        if (inlineValue->isEmpty() && name != u"--workshop-phone"_s && name != u"--workshop-address"_s
            && name != u"--workshop-name"_s)
            return u"l’option %1 attend une valeur non vide."_s.arg(name);
        options.*(option->field) = *inlineValue;
    }
    if (options.saveCapture && options.capture)
        return u"--save-capture enregistre ce Mac : il ne se combine pas avec --capture."_s;
    if ((options.search || options.level || options.from || options.to) && !options.journalCsv)
        return u"--search, --level, --from et --to choisissent les lignes de --journal-csv."_s;
    if (options.level && *options.level != u"correct"_s && *options.level != u"attention"_s
        && *options.level != u"anomalie"_s)
        return u"--level attend correct, attention ou anomalie."_s;
    for (const std::optional<QString> *date : {&options.from, &options.to}) {
        if (*date && !QDate::fromString(**date, Qt::ISODate).isValid())
            return u"date illisible : « %1 » (AAAA-MM-JJ attendu)."_s.arg(**date);
    }
    return options;
}

QString helpText()
{
    return u"Usage : quillon-bilan [options]\n"
           "Dresse le bilan matériel de ce Mac (ou d’une capture) et l’écrit en texte.\n"
           "\n"
           "  --capture DOSSIER          relit une capture au lieu de ce Mac\n"
           "  --output FICHIER           écrit le bilan dans ce fichier : un PDF A4 si son nom finit par .pdf, sinon le texte\n"
           "  --record                   ajoute la machine au journal, comme l’application\n"
           "  --journal-csv              écrit le journal au format CSV sur la sortie standard\n"
           "    --search TEXTE           … seulement les machines dont le numéro de série ou le modèle contient TEXTE\n"
           "    --level NIVEAU           … seulement celles au verdict correct, attention ou anomalie\n"
           "    --from DATE, --to DATE   … seulement celles contrôlées entre ces dates (AAAA-MM-JJ, incluses)\n"
           "  --workshop-name NOM        nom de l’atelier pour ce bilan\n"
           "  --workshop-phone TÉL       téléphone de l’atelier pour ce bilan\n"
           "  --workshop-address ADR     adresse de l’atelier pour ce bilan\n"
           "  --save-capture DOSSIER     enregistre une capture de ce Mac (macOS)\n"
           "  --version                  affiche la version\n"
           "  --help                     affiche cette aide\n"_s;
}

} // namespace BilanCommandLine
