#include "core/engine.h"
#include "family/bound_boxes.h"
#include "family/frmMembers.h"
#include "family/member_records.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/numbers.h"
#include "platform/runtime/runtime_error.h"
#include "platform/ui/controls.h"
#include "platform/ui/dialogs.h"
#include "platform/ui/hourglass.h"
#include "presentation/vocabulary.h"
#include "store/data_helpers.h"
#include "ui_frmMembers.h"

#include <QtWidgets/QLabel>
#include <QtWidgets/QStatusBar>

#include <algorithm>

// Changing members: adding, editing, choosing a code or a date, saving, deleting.

using namespace Qt::Literals::StringLiterals;

namespace
{

void paintBox(QWidget *box, const QColor &color)
{
    QPalette palette = box->palette();
    palette.setColor(QPalette::Base, color);
    box->setPalette(palette);
}

} // namespace

// --- beginning and giving up

void frmMembers::cmdAdd_Click()
{
    showingFailures([this] {
        dropUnaskedEdit();
        if (!(m_primary->bof() && m_primary->eof()))
            m_savedBookmark = m_primary->bookmark();
        m_primary->addNew();
        m_ui->lblStatus->setText(u"Add record"_s);
        m_adding = true;
        setButtons(false);
        m_updateType = u"add"_s;
        m_txtFields->show();
        m_txtFields->box(fieldName)->setFocus();
    });
}

void frmMembers::cmdEdit_Click()
{
    showingFailures([this] {
        if (m_primary->recordCount() < 1)
            return;
        m_ui->lblStatus->setText(u"Edit record"_s);
        m_editing = true;
        setButtons(false);
        m_updateType = u"edit"_s;
        m_txtFields->box(fieldName)->setFocus();
    });
}

void frmMembers::cmdCancel_Click()
{
    setButtons(true);
    hideChoosers();
    m_editing = false;
    m_adding = false;
    ignoringErrors([this] { m_primary->cancelUpdate(); });
    ignoringErrors([this] {
        if (m_savedBookmark > 0)
            m_primary->setBookmark(m_savedBookmark);
        else
            m_primary->moveFirst();
    });
    m_updateType.clear();
    for (int i = 0; i < m_txtFields->count(); ++i)
        paintBox(m_txtFields->box(i), Qt::white); // a fault of what was given up
    ignoringErrors([this] { showRow(); });
    ignoringErrors([this] { adoPrimaryRS_MoveComplete(); });
}

// --- choosing a code or a date

void frmMembers::hideChoosers()
{
    m_activeField = -1;
    m_ui->Combo1->hide();
    m_ui->DTPicker1->hide();
}

void frmMembers::txtFields_Click(int index)
{
    if (isBrowsing())
        return;
    QLineEdit *box = m_txtFields->box(index);
    if (const QStringList *names = namesOf(index)) {
        hideChoosers();
        m_activeField = qint16(index);
        QComboBox &combo = *m_ui->Combo1;
        combo.setGeometry(box->x(), box->y(), box->width(), combo.height());
        box->resize(box->width(), combo.height());
        combo.clear();
        combo.addItems(*names);
        int shown = int(names->indexOf(box->text()));
        if (shown < 0 && isNumeric(box->text()))
            shown = int(std::clamp(readDouble(box->text()), 1.0, double(names->size()))) - 1;
        combo.setCurrentIndex(std::max(shown, 0));
        showChooser(&combo, index);
    } else if (index == fieldDob) {
        const bool shows = m_ui->DTPicker1->isHidden();
        hideChoosers();
        if (!shows)
            return;
        m_activeField = qint16(index);
        m_ui->DTPicker1->setGeometry(box->geometry());
        m_ui->DTPicker1->setValue(isDate(box->text()) ? readDate(box->text()) : today());
        showChooser(m_ui->DTPicker1, index);
    } else {
        hideChoosers();
    }
}

/// Brings up what lies over a box, under the name of the box's label.
void frmMembers::showChooser(QWidget *chooser, int index)
{
    setAccessibleText(chooser, captionOf(findChild<QLabel *>(u"lblLabels_"_s + QString::number(index))));
    chooser->show();
    chooser->raise();
    chooser->setFocus();
}

void frmMembers::Combo1_Click()
{
    if (m_activeField < 0)
        return;
    const int index = m_activeField;
    const QString word = m_ui->Combo1->currentText();
    const QString &field = m_txtFields->field(index);
    showingFailures([&] {
        m_primary->setValue(field, codeOf(field, word));
        m_txtFields->box(index)->setText(word);
    });
    hideChoosers();
    m_txtFields->box(index)->setFocus();
}

void frmMembers::DTPicker1_CloseUp()
{
    if (m_ui->DTPicker1->isHidden())
        return;
    hideChoosers();
    showingFailures([this] {
        m_primary->setValue(m_txtFields->field(fieldDob), m_ui->DTPicker1->value());
        m_txtFields->show(fieldDob);
    });
    m_txtFields->box(fieldDob)->setFocus();
}

// --- update and delete

bool frmMembers::validate()
{
    for (int i = 0; i < m_txtFields->count(); ++i) {
        QLineEdit *box = m_txtFields->box(i);
        if (!isRefused(m_txtFields->field(i), box->text())) {
            paintBox(box, Qt::white);
            continue;
        }
        const QColor before = box->palette().color(QPalette::Base);
        box->setFocus();
        paintBox(box, QColor(0xFF, 0, 0));
        // Does not end: the command stays open beneath the running screen, the box stays red, and the user
        // goes on. Meant; what stands behind it is out of reach and kept.
        Pause(1000);
        paintBox(box, before);
        m_ui->StatusBar1->showMessage(translate(m_txtFields->field(i)));
        return false;
    }
    return true;
}

void frmMembers::cmdUpdate_Click()
{
    showingFailures([this] { update(); });
}

void frmMembers::update()
{
    if (!validate())
        return showMessage(engine.isArabic ? u"يوجد خطأ في المعلومات.  فضلاً قم بتصحيحه أولاً"_s
                                           : u"There is an error in your input, please correct it"_s);
    m_txtFields->writeAll();
    if (m_editing && !isChanged(*m_primary))
        return showMessage(engine.isArabic ? u"لم تقم بأي تعديل"_s : u"No change was made!"_s);
    if (!askYesNo(engine.textAreYouSure))
        return;
    showRowValues();
    if (m_adding)
        m_primary->setValue(u"VALID"_s, true);

    // No transaction: an audit row stays behind when the member's row is refused. Meant.
    writeMemberAudit(*m_primary, m_editing, m_updateType);
    const QString oldName = m_primary->originalValue(u"name"_s).toText();
    const QString newName = m_primary->value(u"name"_s).toText();
    // No command sets "update", so a renaming reaches the members only. Meant.
    if (oldName != newName && m_updateType == u"update")
        renameInLedgers(oldName, newName);
    // Emptied before the write: a second try after a refused one has no word for its audit row and is
    // refused there; the way out is Cancel. Meant.
    m_updateType.clear();
    m_primary->setValue(u"lastupdate"_s, generalDate(now()));
    m_primary->updateBatch();

    if (m_adding)
        m_primary->moveLast();
    m_editing = false;
    m_adding = false;
    setButtons(true);
    hideChoosers();
    showRow();
    adoPrimaryRS_MoveComplete();
}

/// Sets a box of codes that holds a word back to the row's value.
void frmMembers::showRowValues()
{
    for (const int index : {int(fieldSex), int(fieldRelation)}) {
        if (!isNumeric(m_txtFields->box(index)->text()))
            m_txtFields->show(index);
    }
}

void frmMembers::cmdDelete_Click()
{
    showingFailures([this] { deleteMember(); });
}

void frmMembers::deleteMember()
{
    dropUnaskedEdit();
    const Hourglass hourglass;
    if (hasLedgerRows(m_primary->value(u"name"_s).toText()))
        return showMessage(
            engine.isArabic
                ? u"لا تستطيع إلغاء عضو عندما يكون مسجل بإسمه أو إسمها عمليات دخل أو مصاريف"_s
                : u"You CANNOT delete a member with an outstanding revenue or expense transactions.  "
                  "You must delete pending transactions first"_s);
    // The row marked is the one behind the row tested, except on the last row. Meant.
    m_primary->moveNext();
    if (m_primary->eof())
        m_primary->moveLast();
    m_primary->setValue(u"VALID"_s, false);
    m_primary->setValue(u"lastupdate"_s, generalDate(now()));
    m_updateType = u"delete"_s;
    writeMemberAudit(*m_primary, false, m_updateType);
    m_primary->updateBatch(); // a set can't be queried again during an edit
    m_updateType.clear();
    m_primary->requery();
}
