// Records machines in a journal folder, one save per entry, for the tests that kill it
// while it saves, run several at once or fill its disk:
//   journal_writer FOLDER PREFIX COUNT [LARGEST_FILE_BYTES]
// The serial numbers are PREFIX followed by 1, 2, 3… continuing after the PREFIX entries
// already in the journal; COUNT 0 records until the process is killed or a record fails.
// "saved" is printed once the first entry is in the file. With LARGEST_FILE_BYTES no file
// may grow past that size, as on a full disk: at the first record that fails, the number
// of entries recorded and the journal's reason are printed, and the exit status is 3.
#include "records/history.h"

#include <QCoreApplication>
#include <QTextStream>

#include <csignal>
#include <sys/resource.h>

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
    if (arguments.size() != 4 && arguments.size() != 5)
        return 2;
    if (arguments.size() == 5) {
        // Past the limit a write fails instead of ending the process.
        std::signal(SIGXFSZ, SIG_IGN);
        const rlim_t largest = arguments.at(4).toULongLong();
        const rlimit limit{largest, largest};
        if (setrlimit(RLIMIT_FSIZE, &limit) != 0)
            return 2;
    }
    History history(std::make_shared<SystemClock>(), arguments.at(1));
    const QString prefix = arguments.at(2);
    const int count = arguments.at(3).toInt();
    qsizetype next = 1;
    for (const HistoryEntry &entry : history.entries())
        next += entry.serialNumber.value_or(QString()).startsWith(prefix) ? 1 : 0;
    QTextStream out(stdout);
    for (int i = 0; count == 0 || i < count; ++i, ++next) {
        const HardwareInfo machine{.modelName = u"MacBook Air"_s, .serialNumber = prefix + QString::number(next)};
        if (!history.record(machine, std::nullopt, {}, DiagnosticsReport())) {
            out << "recorded " << i << Qt::endl << history.problem() << Qt::endl;
            return 3;
        }
        if (i == 0)
            out << "saved" << Qt::endl;
    }
    return 0;
}
