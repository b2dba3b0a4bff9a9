#pragma once

#include <QString>

#include <cstdint>
#include <functional>
#include <vector>

class QComboBox;

namespace marelon {

// One way of equipping the gang tool post: its name (the holder codes and the
// tool counts, shown as they stand) and the pattern code the control expects
// in parameter 990.
struct GangToolPattern {
    QString name;
    int16_t code;
};

// A family's patterns; list position p (0-based) is table position p+1.
using GangToolPatternTable = std::vector<GangToolPattern>;

// Each replaces the content of `table` by the family's patterns, in order.
void LoadL5Patterns(GangToolPatternTable& table);  // "L5 16-20": 28 entries
void LoadL7Patterns(GangToolPatternTable& table);  // "L7 16-20": 96
void LoadM23Patterns(GangToolPatternTable& table); // "M2-3 20-32": 14
void LoadCPatterns(GangToolPatternTable& table);   // "C12-16", "C20-32": 4

// Clears the list, appends each name and sets item data (Qt::UserRole) of
// list position i-1 to the code of table position i.
void FillPatternList(QComboBox& list, const GangToolPatternTable& table);

// Selects the first position whose item data equals `code` and runs `click`
// (the list's click handler), as a user's choice does. An empty list or a
// code the list does not carry leaves the list and its selection alone.
void SelectPatternByCode(QComboBox& list, int code, const std::function<void()>& click);

// The resource path of the picture of an L5 pattern code: ":/datapage/L5-16/20-<code>",
// in German ":/datapage/L5-16/20-de-<code>" (the words drawn in it are German).
QString GangPatternPicture(int code);

} // namespace marelon
