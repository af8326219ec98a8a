// Records machines in a journal folder, one save per entry, for the tests that kill it
// while it saves or run several at once:
//   journal_writer FOLDER PREFIX COUNT
// The serial numbers are PREFIX followed by 1, 2, 3… continuing after the PREFIX entries
// already in the journal; COUNT 0 records until the process is killed. "saved" is printed
// once the first entry is in the file.
#include "records/history.h"

#include <QCoreApplication>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

class SystemClock final : public Clock
{
public:
    QDateTime now() const override { return QDateTime::currentDateTimeUtc(); }
};

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList arguments = app.arguments();
    if (arguments.size() != 4)
        return 2;
    History history(std::make_shared<SystemClock>(), arguments.at(1));
    const QString prefix = arguments.at(2);
    const int count = arguments.at(3).toInt();
    qsizetype next = 1;
    for (const HistoryEntry &entry : history.entries())
        next += entry.serialNumber.value_or(QString()).startsWith(prefix) ? 1 : 0;
    QTextStream out(stdout);
    for (int i = 0; count == 0 || i < count; ++i, ++next) {
        const HardwareInfo machine{.modelName = u"MacBook Air"_s, .serialNumber = prefix + QString::number(next)};
        history.record(machine, std::nullopt, {}, DiagnosticsReport());
        if (i == 0)
            out << "saved" << Qt::endl;
    }
    return 0;
}
