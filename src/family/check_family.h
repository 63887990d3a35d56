#pragma once

/// True when the family is fit for entering transactions: at least two valid members, each with a name, a
/// relation of 1 to 3, a sex of 1 or 2 and a group. Reads through `engine.dbConnection`.
bool CheckFamily();
