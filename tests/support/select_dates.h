#pragma once

#include "support/screens.h"
#include "utilities/frmSelectDates.h"

/// Presses the dates' button and gives the dialog a range; empty texts cancel it.
inline void selectDates(const Screen &screen, const QString &from = {}, const QString &to = {})
{
    onModal<frmSelectDates>([from, to](frmSelectDates &dialog) {
        if (from.isEmpty())
            return click(dialog, "cmdCancel");
        fill(dialog, "DateFromx", from);
        fill(dialog, "DateTox", to);
        click(dialog, "cmdOK");
    });
    click(screen, "btnDateSelect");
}
