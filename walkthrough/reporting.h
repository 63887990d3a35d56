#pragma once

class Player;
class QString;
struct Story;

/// Shows the statements of both sides of the member of `Story::firstSums` and of the family, row by row and
/// by month, and saves each into the folder as PDF and as a workbook: `member.pdf`, `member.xls`,
/// `member-monthly.pdf` and so on. The family's by month is there in Arabic only: the English one fails by
/// intention. Begins and ends on the main screen.
void playStatements(Player &player, const Story &story, const QString &folder);
