#include "family/check_family.h"
#include "support/printing.h"
#include "support/store_fixture.h"

TEST_F(StoreFixture, AFamilyIsUsableWithTwoSoundValidMembers)
{
    EXPECT_FALSE(CheckFamily());
    for (const QString &spoiled : {u"relation=4"_s, u"relation=0"_s, u"relation=null"_s, u"sex=3"_s,
                                   u"sex=null"_s, u"[group]=null"_s, u"name=null"_s, u"valid=false"_s}) {
        execute({u"delete from members"_s});
        addMember({u"A"_s, 1, 2, 0});
        addMember({u"out"_s, 9, 9, 1, u"01/01/1980"_s, false});
        addMember({u"B"_s, 1, 2});
        EXPECT_TRUE(CheckFamily());
        execute({u"update members set "_s + spoiled + u" where name='B'"_s});
        EXPECT_FALSE(CheckFamily()) << spoiled.toStdString();
    }
}
