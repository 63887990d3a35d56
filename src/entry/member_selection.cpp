#include "entry/member_selection.h"

#include "core/engine.h"
#include "entry/elided_label.h"
#include "platform/ui/controls.h"

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QStyle>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace
{

constexpr int membersPerLine = 3;
constexpr int gap = 8;
constexpr int tickWidth = 28;
constexpr int tickInset = 6;

/// One more element of a control array, after the model of its first one.
template <typename Control>
Control *loadElement(Control *first, int index)
{
    auto *element = new Control(first->parentWidget());
    element->setObjectName(first->objectName().section(u'_', 0, 0) + u'_' + QString::number(index));
    element->resize(first->size());
    element->setFont(first->font());
    element->setPalette(first->palette());
    element->setLayoutDirection(first->layoutDirection());
    element->setAutoFillBackground(first->autoFillBackground());
    return element;
}

ElidedLabel *loadLabel(ElidedLabel *first, int index)
{
    auto *label = loadElement(first, index);
    label->setAlignment(first->alignment());
    label->setMargin(first->margin());
    label->setContentsMargins(first->contentsMargins());
    return label;
}

template <typename Control>
void unloadBehind(std::vector<Control *> &elements, int count)
{
    while (int(elements.size()) > count) {
        elements.back()->hide();
        elements.back()->deleteLater();
        elements.pop_back();
    }
}

int lineCount(int elements, int perLine)
{
    return (std::max(elements, 1) + perLine - 1) / perLine;
}

/// Sizes an area's content: as wide as the area, less its scroll bar where the lines do not fit.
void fitContent(QScrollArea *area, int height)
{
    const int bar = height > area->height() ? area->style()->pixelMetric(QStyle::PM_ScrollBarExtent) : 0;
    area->widget()->setFixedSize(area->width() - bar, height);
}

} // namespace

MemberSelection::MemberSelection(const Places &places, QObject *parent)
    : QObject(parent), m_places(places), m_checks{places.check}, m_names{places.name}, m_shares{places.share},
      m_groups{places.group}
{
    for (ElidedLabel *label : {places.name, places.share}) {
        QPalette white = label->palette();
        white.setColor(QPalette::Window, Qt::white);
        label->setPalette(white);
    }
    places.share->setAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
    // The buttons of the groups stand on the painted ground, as the screen's other buttons do.
    places.groupArea->viewport()->setAutoFillBackground(false);
    places.groupArea->widget()->setAutoFillBackground(false);
    connect(places.group, &QPushButton::clicked, this, [this] { Q_EMIT groupClicked(0); });
}

void MemberSelection::rebuildGroups()
{
    const auto rows = Recordset::create();
    rows->open(u"select distinct group from members where valid=true order by [group]"_s, engine.dbConnection,
               CursorType::Static);
    const int groups = rows->rowCount();
    unloadBehind(m_groups, std::max(groups, 1));
    for (int i = 0; i < groups; ++i) {
        if (i == int(m_groups.size()))
            loadGroup(i);
        m_groups[size_t(i)]->setText(rows->valueAt(i, 0).toText());
        m_groups[size_t(i)]->show();
    }
    m_groups.front()->setVisible(groups > 0);
    rows->close();
}

void MemberSelection::loadGroup(int index)
{
    auto *button = loadElement(m_groups.front(), index);
    connect(button, &QPushButton::clicked, this, [this, index] { Q_EMIT groupClicked(index); });
    m_groups.push_back(button);
}

int MemberSelection::groupsPerLine() const
{
    return std::max(1, (m_places.groupArea->widget()->width() + gap) / (m_groups.front()->width() + gap));
}

int MemberSelection::groupHeight() const
{
    return groupHeight(lineCount(int(m_groups.size()), groupsPerLine()));
}

int MemberSelection::groupHeight(int lines) const
{
    return lines * (m_groups.front()->height() + gap) - gap;
}

void MemberSelection::rebuildMembers(const QString &statement, const CaptionOf &captionOf)
{
    const auto rows = Recordset::create();
    rows->open(statement, engine.dbConnection, CursorType::Static);
    resizeMembers(rows->rowCount());
    int index = 0;
    for (; !rows->eof(); rows->moveNext(), ++index) {
        const QString name = rows->value(u"name"_s).toText();
        m_names[size_t(index)]->setText(name);
        setAccessibleText(m_checks[size_t(index)], name);
        if (const auto caption = captionOf(index, *rows))
            m_shares[size_t(index)]->setText(*caption);
    }
    rows->close();
}

void MemberSelection::resizeMembers(int count)
{
    const int kept = std::max(count, 1);
    unloadBehind(m_checks, kept);
    unloadBehind(m_names, kept);
    unloadBehind(m_shares, kept);
    for (int i = 0; i < kept; ++i) {
        if (i == this->count())
            loadMember(i);
    }
    for (int i = 0; i < kept; ++i) {
        m_checks[size_t(i)]->show();
        m_names[size_t(i)]->show();
        m_shares[size_t(i)]->show();
    }
}

void MemberSelection::loadMember(int index)
{
    m_checks.push_back(loadElement(m_checks.front(), index));
    m_names.push_back(loadLabel(m_names.front(), index));
    m_shares.push_back(loadLabel(m_shares.front(), index));
}

void MemberSelection::layOutMember(int index)
{
    QCheckBox *check = m_checks[size_t(index)];
    ElidedLabel *name = m_names[size_t(index)];
    ElidedLabel *share = m_shares[size_t(index)];

    const int width = (m_places.memberArea->widget()->width() + gap) / membersPerLine - gap;
    const int left = m_places.memberArea->widget()->width() - width - index % membersPerLine * (width + gap);
    const int top = index / membersPerLine * (name->height() + share->height() + gap);
    const bool tickAtRight = check->layoutDirection() == Qt::RightToLeft;
    const int labels = tickAtRight ? left : left + tickWidth;

    check->setGeometry(tickAtRight ? left + width - tickWidth : left + tickInset, top, tickWidth - tickInset,
                       name->height() + share->height());
    name->setGeometry(labels, top, width - tickWidth, name->height());
    share->setGeometry(labels, top + name->height(), width - tickWidth, share->height());
}

void MemberSelection::layOut()
{
    fitContent(m_places.groupArea, groupHeight());
    const int perLine = groupsPerLine();
    for (int i = 0; i < int(m_groups.size()); ++i) {
        QPushButton *button = m_groups[size_t(i)];
        const int right = m_places.groupArea->widget()->width() - i % perLine * (button->width() + gap);
        button->move(right - button->width(), i / perLine * (button->height() + gap));
    }
    fitContent(m_places.memberArea, memberHeight());
    for (int i = 0; i < count(); ++i)
        layOutMember(i);
}

int MemberSelection::memberHeight() const
{
    const int line = m_names.front()->height() + m_shares.front()->height() + gap;
    return lineCount(count(), membersPerLine) * line - gap;
}

bool MemberSelection::isTicked(int index) const
{
    return m_checks[size_t(index)]->isChecked();
}

qint16 MemberSelection::CountSelected() const
{
    return qint16(std::ranges::count_if(m_checks, [](const QCheckBox *check) { return check->isChecked(); }));
}

QStringList MemberSelection::selectedNames() const
{
    QStringList names;
    for (int i = 0; i < count(); ++i) {
        if (isTicked(i))
            names << m_names[size_t(i)]->text();
    }
    return names;
}

void MemberSelection::tickAll()
{
    for (QCheckBox *check : m_checks)
        check->setChecked(true);
}

void MemberSelection::clearTicks()
{
    for (QCheckBox *check : m_checks)
        check->setChecked(false);
}

void MemberSelection::clearShares()
{
    for (ElidedLabel *share : m_shares)
        share->clear();
}

void MemberSelection::showShares(const QString &caption)
{
    for (int i = 0; i < count(); ++i) {
        if (isTicked(i))
            m_shares[size_t(i)]->setText(caption);
    }
}

void MemberSelection::tickGroup(int button)
{
    clearTicks();
    const auto rows = Recordset::create();
    rows->open(u"select name,group from members where valid=true and [group] ="_s +
                   m_groups[size_t(button)]->text(),
               engine.dbConnection, CursorType::Static);
    for (int row = 0; row < rows->rowCount(); ++row) {
        const QString name = rows->valueAt(row, 0).toText();
        for (int i = 0; i < count(); ++i) {
            if (m_names[size_t(i)]->text() == name)
                m_checks[size_t(i)]->setChecked(true);
        }
    }
    rows->close();
}

void MemberSelection::clearArrays()
{
    unloadBehind(m_checks, 1);
    unloadBehind(m_names, 1);
    unloadBehind(m_shares, 1);
    unloadBehind(m_groups, 1);
}
