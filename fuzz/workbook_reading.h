#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <map>
#include <utility>

// Readers of saved workbooks that share nothing with their writers. A file against the rules is a finding.
namespace fuzz
{

/// Texts by row and column, from 0; without empty ones.
using CellTexts = std::map<std::pair<int, int>, QString>;

/// The texts of the first sheet of a binary workbook, which must hold no other cells.
CellTexts textsOfXls(const QByteArray &file);

/// The fields of tab-separated UTF-8 with a byte order mark.
CellTexts textsOfTabs(const QByteArray &file);

} // namespace fuzz
