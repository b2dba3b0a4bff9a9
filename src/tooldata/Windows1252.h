#pragma once

#include <QByteArray>
#include <QString>

// The text of holder library files: the Windows-1252 code page, the 8-bit
// code page of the Windows systems these files come from and go to. It is
// Latin-1 except for 0x80 to 0x9F, where it holds the euro sign, typographic
// quotes and dashes and a few letters (Š, Œ, Ž, Ÿ ...); its five unused codes
// there read as the control characters of the same number, as Windows reads them.
namespace marelon {

QString FromWindows1252(const QByteArray& bytes);

// A character the code page cannot hold is written as "?": check first with
// CharactersOutsideWindows1252.
QByteArray ToWindows1252(const QString& text);

// The characters of the text that Windows-1252 cannot hold, each once, in
// the order they first appear; empty when the whole text fits.
QString CharactersOutsideWindows1252(const QString& text);

} // namespace marelon
