#pragma once

#include "platform/spreadsheet/contents.h"

namespace spreadsheet
{

inline constexpr std::size_t formatCount = 4;

/// A format in the letters of spreadsheets; null for the general one.
inline const char *formatText(Format format)
{
    switch (format) {
    case Format::Date:
        return "dd/mm/yyyy";
    case Format::DateTime:
        return "dd/mm/yyyy hh:mm:ss";
    case Format::Money:
        return "#,##0.00##";
    case Format::General:
        break;
    }
    return nullptr;
}

} // namespace spreadsheet
