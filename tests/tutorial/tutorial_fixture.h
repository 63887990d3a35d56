#pragma once

#include "support/hostile.h"
#include "support/screens.h"
#include "support/store_fixture.h"
#include "tutorial/frmGenerateData.h"
#include "tutorial/tutorial_mode.h"

#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>

/// A store with a wife, a son, a daughter and a member who is not valid.
class TutorialFixture : public StoreFixture
{
protected:
    TutorialFixture()
    {
        addMember({.name = u"Fatima"_s, .relation = 1, .sex = 2, .group = 7, .title = u"Mrs"_s});
        addMember({.name = u"Omar"_s});
        addMember({.name = u"Sara"_s, .relation = 3, .sex = 2});
        addMember({.name = u"Zayd"_s, .relation = 9, .valid = false});
    }
    static QStringList testRows(const QString &sql) { return shellRows(sql, engine.testStorePath); }
    /// Every row of the real store.
    static QStringList realRows()
    {
        const ConnectionPtr store = Connection::create();
        store->open(engine.connectionString);
        return dumpOf(store, u"archives settings ledger members audit_members relations sexes details users "
                             "audit_users general audit_general"_s.split(u' '));
    }
};
