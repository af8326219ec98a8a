#include "bench_table.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

double Samples::percentile(double fraction) const
{
    if (values.isEmpty())
        return std::nan("");
    QList<double> sorted = values;
    std::sort(sorted.begin(), sorted.end());
    // Nearest rank: the smallest value with at least `fraction` of the samples at or below it.
    const auto rank = qsizetype(std::ceil(fraction * double(sorted.size())));
    return sorted.at(std::clamp<qsizetype>(rank - 1, 0, sorted.size() - 1));
}

double Samples::median() const
{
    if (values.isEmpty())
        return std::nan("");
    QList<double> sorted = values;
    std::sort(sorted.begin(), sorted.end());
    const qsizetype middle = sorted.size() / 2;
    return sorted.size() % 2 == 1 ? sorted.at(middle) : (sorted.at(middle - 1) + sorted.at(middle)) / 2.0;
}

double Samples::percentile95() const
{
    return percentile(0.95);
}

QString formatFigure(double value, const QString &unit)
{
    if (std::isnan(value))
        return u"—"_s;
    const double size = std::fabs(value);
    const int decimals = size >= 100 ? 0 : size >= 10 ? 1 : size >= 1 ? 2 : 3;
    const QString number = QString::number(value, 'f', decimals);
    return unit.isEmpty() ? number : number + u' ' + unit;
}

bool Row::withinBudget() const
{
    if (!budget)
        return true;
    const double typical = samples.median();
    return budgetIncluded ? typical <= *budget : typical < *budget;
}

void BenchTable::heading(const QString &title)
{
    m_lines.append({ true, title, {} });
}

void BenchTable::add(Row row)
{
    if (!row.withinBudget())
        m_missed.append(row.label);
    m_lines.append({ false, {}, std::move(row) });
}

void BenchTable::print(QTextStream &out) const
{
    constexpr int labelWidth = 66;
    constexpr int figureWidth = 11;
    out << u"%1%2%3%4  %5  %6\n"_s.arg(u"Mesure"_s, -labelWidth)
               .arg(u"médiane"_s, figureWidth)
               .arg(u"p95"_s, figureWidth)
               .arg(u"cible"_s, figureWidth)
               .arg(u"    "_s)
               .arg(u"essais"_s);
    for (const Line &line : m_lines) {
        if (line.isHeading) {
            out << u"\n"_s << line.title << u"\n"_s;
            continue;
        }
        const Row &row = line.row;
        QString verdict = u"    "_s;
        QString budget;
        if (row.budget) {
            budget = (row.budgetIncluded ? u"≤ "_s : u"< "_s) + formatFigure(*row.budget, row.unit);
            verdict = row.withinBudget() ? u"ok  "_s : u"RATÉ"_s;
        }
        out << u"  %1%2%3%4  %5  %6"_s.arg(row.label, -(labelWidth - 2))
                   .arg(formatFigure(row.samples.median(), row.unit), figureWidth)
                   .arg(formatFigure(row.samples.percentile95(), row.unit), figureWidth)
                   .arg(budget, figureWidth)
                   .arg(verdict)
                   .arg(row.samples.values.size());
        if (!row.note.isEmpty())
            out << u"  ("_s << row.note << u')';
        out << u'\n';
    }
    out.flush();
}
