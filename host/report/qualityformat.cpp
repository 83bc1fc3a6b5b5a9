#include "host/report/qualityformat.h"

#include <QStringList>

#include <algorithm>

namespace {

QString percent(const MarkerQuality& q) { return QString::number(q.validPercent(), 'f', 1); }

// The first six are the columns the report always had; the rest follow them.
QStringList row(const MarkerQuality& q, const QString& name)
{
    return {name,
            QString::number(q.frames),
            percent(q),
            QString::number(q.gaps),
            QString::number(q.longestGap),
            QString::number(q.poor),
            QString::number(q.missing()),
            QString::number(q.filled)};
}

QString summary(const TakeQuality& take)
{
    const MarkerQuality t = take.total();
    return QString("%1  frames %2  rate %3 Hz  markers %4 (%5 never valid)  valid %6 %  missing %7  filled %8  "
                   "gaps %9  longest gap %10  poor %11\n")
        .arg(QString::fromStdString(take.name))
        .arg(take.frames)
        .arg(take.rate)
        .arg(take.markers.size())
        .arg(take.neverValid())
        .arg(percent(t))
        .arg(t.missing())
        .arg(t.filled)
        .arg(t.gaps)
        .arg(t.longestGap)
        .arg(t.poor);
}

// Names align left, numbers right, each column as wide as its widest cell.
QString table(const std::vector<QStringList>& rows)
{
    std::vector<int> width(size_t(rows.front().size()), 0);
    for (const QStringList& r : rows)
        for (int c = 0; c < r.size(); ++c)
            width[size_t(c)] = std::max(width[size_t(c)], r[c].size());
    QString out;
    for (const QStringList& r : rows) {
        QStringList cells;
        for (int c = 0; c < r.size(); ++c)
            cells << (c == 0 ? r[c].leftJustified(width[0]) : r[c].rightJustified(width[size_t(c)]));
        out += cells.join("  ") + '\n';
    }
    return out;
}

QString csvField(const QString& s)
{
    if (!s.contains(',') && !s.contains('"') && !s.contains('\n'))
        return s;
    return '"' + QString(s).replace('"', "\"\"") + '"';
}

} // namespace

QString qualityText(const std::vector<TakeQuality>& takes)
{
    QString out;
    for (const TakeQuality& take : takes) {
        if (!out.isEmpty())
            out += '\n';
        out += summary(take);
        std::vector<QStringList> rows{{"marker", "frames", "valid %", "gaps", "longest gap", "poor", "missing", "filled"}};
        QStringList never;
        for (const MarkerQuality& m : take.markers)
            if (m.neverValid())
                never << QString::fromStdString(m.name);
            else
                rows.push_back(row(m, QString::fromStdString(m.name)));
        out += table(rows);
        if (!never.isEmpty())
            out += QString("never valid: %1\n").arg(never.join(", "));
    }
    return out;
}

QString qualityCsv(const std::vector<TakeQuality>& takes)
{
    QString out = "take,marker,frames,valid_percent,gaps,longest_gap,poor,missing,filled,never_valid\n";
    for (const TakeQuality& take : takes) {
        const QString name = csvField(QString::fromStdString(take.name));
        QStringList total = row(take.total(), QString());
        total[1] = QString::number(take.frames);
        out += name + ',' + total.join(',') + ',' + QString::number(take.neverValid()) + '\n';
        for (const MarkerQuality& m : take.markers)
            out += name + ',' + csvField(QString::fromStdString(m.name)) + ',' + row(m, QString()).mid(1).join(',') +
                   ',' + (m.neverValid() ? "1" : "0") + '\n';
    }
    return out;
}
