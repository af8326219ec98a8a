#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <variant>

// What the command line of quillon-bilan asks for.
struct BilanOptions
{
    std::optional<QString> capture;
    std::optional<QString> output;
    bool record = false;
    bool journalCsv = false;
    std::optional<QString> workshopName;
    std::optional<QString> workshopPhone;
    std::optional<QString> workshopAddress;
    std::optional<QString> saveCapture;
    // The selection of --journal-csv: text in the serial number or model, level word
    // ("correct", "attention", "anomalie"), dates AAAA-MM-JJ.
    std::optional<QString> search;
    std::optional<QString> level;
    std::optional<QString> from;
    std::optional<QString> to;
    bool version = false;
    bool help = false;
};

namespace BilanCommandLine {

// The options, or one French sentence naming what is wrong with the arguments
// (the program's own name excluded).
std::variant<BilanOptions, QString> parse(const QStringList &arguments);

QString helpText();

} // namespace BilanCommandLine
