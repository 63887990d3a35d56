#include "core/engine.h"
#include "platform/runtime/runtime_error.h"
#include "platform/ui/dialogs.h"
#include "presentation/vocabulary.h"
#include "store/audit_stamp.h"
#include "ui_frmUsers.h"
#include "users/frmUsers.h"

#include <utility>

using namespace Qt::Literals::StringLiterals;

// Changes of a user: who may make them, their question, their audit row.

namespace
{

constexpr qint32 lowestRank = 1;
constexpr qint32 editorsRank = 2;
constexpr qint32 topRank = 3;
constexpr qint32 doesNotFit = -2147217887;

/// A comparison with an empty rank is False.
bool mayNotEdit()
{
    return engine.userRank && *engine.userRank < editorsRank;
}

/// The table that a statement reads: the word after " from ".
QString sourceTable(const QString &statement)
{
    return statement.section(u" from "_s, 1, 1).section(u' ', 0, 0);
}

QString wordOf(const QString &action)
{
    if (action == u"update")
        return u"تعديل"_s;
    if (action == u"add")
        return u"إضافة"_s;
    return action == u"delete" ? u"حذف"_s : u"غير معروف"_s;
}

void showInvalid(const QString &field)
{
    showMessage(u"Invalid entry..  update cancelled  "_s + u"\r\n"_s +
                u"هذه القيمه غير مناسبه فضلا قم بإدخال شئ مناسب"_s + u"\r\n"_s + translate(field));
}

} // namespace

void frmUsers::adoPrimaryRS_WillChangeRecord(RecordChange &change)
{
    switch (change.reason) {
    case ChangeReason::AddNew:
        return begin(u"add"_s);
    case ChangeReason::Delete:
        return begin(u"delete"_s);
    case ChangeReason::FirstChange:
        return begin(u"update"_s);
    case ChangeReason::Update:
        return confirmUpdate(change);
    case ChangeReason::UndoUpdate:
    case ChangeReason::UndoAddNew: // also by the Escape key: nothing is pending any more
        m_pendingAction.clear();
        m_closeAllowed = true;
        return;
    }
}

void frmUsers::begin(const QString &action)
{
    m_closeAllowed = false;
    m_pendingAction = action;
}

void frmUsers::confirmUpdate(RecordChange &change)
{
    const QString action = m_pendingAction;
    m_declined = !askYesNo(m_closing ? engine.textSaveChanges : engine.textAreYouSure);
    if (m_declined)
        change.cancel = true;
    else if (u"action"_s ==
             u"update"_s) // the word itself never matches, so that every update is audited: that is meant
        change.cancel = isRowChanged() && !WriteUserAudit();
    else
        change.cancel = !WriteUserAudit();
    if (change.cancel)
        m_refused = action;
    m_closeAllowed = true;
    m_pendingAction.clear();
}

void frmUsers::undoRefused()
{
    const QString action = *std::exchange(m_refused, std::nullopt);
    if (action == u"add") {
        m_primary->cancelBatch();
        m_primary->moveFirst();
    } else if (action == u"delete") {
        m_primary->cancelBatch();
    } else {
        m_primary->cancelUpdate();
    }
    m_ui->grdDataGrid->viewport()->update();
}

void frmUsers::grdDataGrid_Error(const RuntimeError &failure)
{
    const bool unfit = failure.number() == doesNotFit && m_primary->isOpen();
    if (unfit && m_ui->grdDataGrid->col() == m_primary->fieldIndex(u"rank"_s))
        return showInvalid(u"rank"_s); // no number, or too large a one
    showingFailures([&] { showFailure(failure); });
}

bool frmUsers::isRowChanged() const
{
    for (int index = 0; index < m_primary->fieldCount(); ++index) {
        if (m_primary->value(index) != m_primary->originalValue(index))
            return true;
    }
    return false;
}

bool frmUsers::isValid(const QString &field, const Value &value) const
{
    if (field == u"name")
        return !value.toText().isEmpty();
    if (field != u"rank")
        return true;
    if (m_ui->ComboRank->findText(value.toText(), Qt::MatchFixedString) < 0) // capitals regarded alike
        return false;
    const qint32 rank = value.toInt();
    return rank >= lowestRank && rank <= topRank && !(engine.userRank && rank > *engine.userRank) &&
           !mayNotEdit();
}

QString frmUsers::CheckUserFields() const
{
    bool valid = true;
    QString field;
    for (int index = 0; valid && index < m_primary->fieldCount(); ++index) {
        field = m_primary->field(index).name;
        valid = isValid(field, m_primary->value(index));
    }
    if (mayNotEdit())
        showMessage(engine.isArabic ? u"لا تملك الصلاحيات الكافيه لإتمام هذه العمليه"_s
                                    : u"You do not have enough permission to perform this task!"_s);
    return valid && !mayNotEdit() ? QString() : field;
}

bool frmUsers::WriteUserAudit()
{
    if (m_pendingAction != u"delete") {
        const QString invalid = CheckUserFields();
        if (!invalid.isEmpty()) {
            showInvalid(invalid);
            return false;
        }
    }
    const RecordsetPtr audit = newAuditRow(sourceTable(m_primary->source()));
    for (int index = 0; index < m_primary->fieldCount(); ++index) {
        const QString name = m_primary->field(index).name;
        if (m_pendingAction == u"update")
            audit->setValue(name, m_primary->originalValue(index));
        else if (m_pendingAction == u"delete")
            audit->setValue(name, m_primary->value(index));
    }
    writeAuditRow(*audit, wordOf(m_pendingAction));
    m_pendingAction.clear();
    return true;
}

void frmUsers::deleteUser()
{
    const QString userid = m_primary->value(u"userid"_s).toText();
    if (userid == engine.currentUser)
        return showMessage(u"You cannot delete your account!  لا تستطيع إلغاء حسابك بنفسك"_s,
                           MessageIcon::Critical);
    if (engine.currentUser < userid) // the names, not the ranks: that is meant
        return showMessage(
            u"You cannot delete this account!  لا تستطيع إلغاء حساب مستخدم لديه صلاحيات أعلى من صلاحياتك"_s,
            MessageIcon::Critical);
    if (!askYesNo(engine.textAreYouSure))
        return;
    // No action is pending, so that the audit row holds no field, and what is not allowed is deleted all the
    // same: that is meant.
    WriteUserAudit();
    engine.dbConnection->execute(u"update users set valid=false where userid='"_s + userid + u"'"_s);
    m_primary->resync();
    m_primary->moveNext();
    if (m_primary->eof())
        m_primary->moveLast();
    cmdRefresh_Click();
}
