#include "presentation/status_panels.h"

#include "core/engine.h"

#include <QtWidgets/QLabel>
#include <QtWidgets/QStatusBar>

QLabel *addStatusPanel(QStatusBar *bar, const QString &text)
{
    auto *panel = new QLabel;
    panel->setTextFormat(Qt::PlainText);
    panel->setText(text);
    panel->setAlignment(engine.isArabic ? Qt::AlignCenter : Qt::AlignLeft);
    panel->setFont(bar->window()->font());
    panel->setContentsMargins(3, 3, 3, 3); // room for the vowel marks of a second font, too
    bar->addWidget(panel, 1);
    return panel;
}
