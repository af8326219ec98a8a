#pragma once

#include <QElapsedTimer>
#include <QList>
#include <QString>
#include <QTextStream>

#include <optional>

// Samples of one measurement and their summary: the median and the 95th percentile
// (nearest rank), the figures every line of the table gives.
struct Samples
{
    QList<double> values;

    double median() const;
    double percentile95() const;
    double percentile(double fraction) const;
};

// Runs `work` a few times unmeasured (caches, lazily built tables, thread start), then
// `runs` times measured; each sample is the wall time of one call in milliseconds.
template <typename Work> Samples timeRuns(int warmups, int runs, Work work)
{
    for (int i = 0; i < warmups; ++i)
        work();
    Samples samples;
    samples.values.reserve(runs);
    QElapsedTimer timer;
    for (int i = 0; i < runs; ++i) {
        timer.start();
        work();
        samples.values.append(double(timer.nsecsElapsed()) / 1e6);
    }
    return samples;
}

// One line of the table: what is measured, its figures in `unit`, and the budget the
// median is held to (none for figures given for information).
struct Row
{
    QString label;
    Samples samples;
    QString unit;
    std::optional<double> budget;
    QString note;
    // The budget is "at most" rather than "under".
    bool budgetIncluded = false;

    bool withinBudget() const;
};

// The printed table: headings, then rows, each with its verdict against its budget.
class BenchTable
{
public:
    void heading(const QString &title);
    void add(Row row);
    // Rows whose median is over budget, for the closing summary.
    QStringList missed() const { return m_missed; }
    void print(QTextStream &out) const;

private:
    struct Line
    {
        bool isHeading = false;
        QString title;
        Row row;
    };
    QList<Line> m_lines;
    QStringList m_missed;
};

QString formatFigure(double value, const QString &unit);
