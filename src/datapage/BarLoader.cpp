#include "datapage/BarLoader.h"

#include "numeric/NumberText.h"

#include <QLocale>

#include <cmath>

namespace marelon {
namespace {

QString Invariant(double value, const char* mask)
{
    return numeric::Format(value, QString::fromLatin1(mask), QLocale::c());
}

// The number after the first occurrence of marker; 0 when there is none.
double NumberAfter(const QString& command, QChar marker)
{
    const qsizetype at = command.indexOf(marker);
    if (at < 0)
        return 0;
    const double value = numeric::LeadingNumber(command.mid(at + 1));
    return std::isfinite(value) ? value : 0;
}

} // namespace

QString BuildBarLoaderCommand(const BarLoaderLine& line)
{
    QString command = QStringLiteral("M155 X") + Invariant(line.chamferX, "###0.###")
                      + QStringLiteral(" Z") + Invariant(line.chamferZ, "###0.###")
                      + QStringLiteral(" W") + Invariant(line.pullBack, "###0.##");
    if (!line.spindleStop)
        command += QStringLiteral(" R1 S") + Invariant(line.spindleRpm, "###0");
    if (line.m1)
        command += QStringLiteral(" M1");
    return command;
}

BarLoaderLine ReadBarLoaderCommand(const QString& command)
{
    BarLoaderLine line;
    line.chamferX = NumberAfter(command, QLatin1Char('X'));
    line.chamferZ = NumberAfter(command, QLatin1Char('Z'));
    line.pullBack = NumberAfter(command, QLatin1Char('W'));
    line.spindleStop = !command.contains(QLatin1String("R1"));
    line.spindleRpm = NumberAfter(command, QLatin1Char('S'));
    return line;
}

int BarLoaderTypeCode(bool magazine, int programTypePosition)
{
    if (!magazine)
        return 0;
    return programTypePosition == 0 ? 1 : 2;
}

BarLoaderEnabling BarLoaderEnablingFor(bool magazine, int programTypePosition)
{
    switch (BarLoaderTypeCode(magazine, programTypePosition)) {
    case 1:
        return {true, true, false};
    case 2:
        return {false, true, true};
    default:
        return {false, false, false};
    }
}

} // namespace marelon
