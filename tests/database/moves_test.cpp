#include "database/temp_store.h"

#include <algorithm>

// Reading: fields, the current row, filter, search, the other views of the same rows.

using Moves = TempStore;

TEST_F(Moves, FieldsAreFoundWithoutRegardToCase)
{
    const RecordsetPtr set = opened(u"select dob,name,[group] as [group],rank as [group] from people"_s);
    EXPECT_EQ(set->field(0).attributes, 122); // a fixed size
    EXPECT_EQ(set->field(1).attributes, 106);
    EXPECT_EQ(set->fieldIndex(u"Group"_s), 2);
    EXPECT_EQ(set->fieldIndex(u"none"_s), -1);
    EXPECT_EQ(failureOf([&] { set->value(u"none"_s); }), 3265);
    EXPECT_EQ(failureOf([&] { set->value(4); }), 3265);
}

TEST_F(Moves, ValuesComeBackAsTheyWereWritten)
{
    const std::vector<std::pair<QString, Value>> values = {
        {u"name"_s, u"\U0001F600\U0001F600 \u0645\u0631\u0649"_s}, // 8 units
        {u"note"_s, u"it's; --"_s},
        {u"rank"_s, 255},
        {u"group"_s, -2147483647 - 1},
        {u"amount"_s, Money::fromTenThousandths(-9223372036854775807)},
        {u"married"_s, true},
        {u"dob"_s, makeDate(1899, 12, 30, 13, 5, 9)},
    };
    const RecordsetPtr set = table();
    for (const bool filled : {true, false}) {
        set->addNew();
        for (const auto &[field, value] : values)
            set->setValue(field, filled ? value : field == u"name" ? Value(u"x"_s) : Value());
        set->update();
    }
    set->requery();
    for (const auto &[field, value] : values)
        EXPECT_EQ(set->value(field), value);
    EXPECT_EQ(rows(u"select note,rank,[group],amount,valid,married,dob from people where id=2"_s),
              "null null null null True False null");
}

TEST_F(Moves, TheCurrentRowMoves)
{
    const auto at = [](const Recordset &set) {
        return std::to_string(set.absolutePosition()) + (set.bof() ? " bof" : "") + (set.eof() ? " eof" : "");
    };
    const auto fails = [](auto &&work) { return failureOf(work) == 3021; };
    const RecordsetPtr none = opened(u"select name from people"_s);
    EXPECT_EQ(at(*none), "-3 bof eof");
    EXPECT_EQ(none->recordCount(), 0);
    const std::vector<std::function<void()>> uses = {
        [&] { none->moveFirst(); }, [&] { none->moveNext(); },    [&] { none->movePrevious(); },
        [&] { none->value(0); },    [&] { none->valueAt(0, 0); }, [&] { none->find(u"name='a'"_s); }};
    EXPECT_TRUE(std::ranges::all_of(uses, fails));

    addPeople({u"a"_s, u"b"_s, u"c"_s});
    const RecordsetPtr set = Recordset::create();
    std::string moves;
    set->moveComplete.connect([&] { moves += at(*set) + ','; });
    set->open(u"select name from people"_s, connection, CursorType::Keyset);
    set->movePrevious();
    EXPECT_TRUE(fails([&] { set->movePrevious(); }));
    set->moveNext();
    set->moveLast();
    set->moveNext();
    EXPECT_TRUE(fails([&] { set->moveNext(); }));
    EXPECT_TRUE(fails([&] { set->value(0); }));
    set->movePrevious();
    set->setAbsolutePosition(2);
    set->setBookmark(1);
    set->moveFirst();
    EXPECT_EQ(moves, "1,-2 bof,1,3,-3 eof,3,2,1,1,");
    EXPECT_EQ(failureOf([&] { set->setAbsolutePosition(4); }), 3001);
    EXPECT_TRUE(fails([&] { set->setBookmark(4); }));
    EXPECT_EQ(set->recordCount(), 3);
    EXPECT_EQ(set->valueAt(2, 0), Value(u"c"_s));
    EXPECT_TRUE(fails([&] { set->valueAt(3, 0); }));
}

TEST_F(Moves, CountsDependOnTheCursor)
{
    const auto countOf = [&](CursorType cursor) {
        const RecordsetPtr set = Recordset::create();
        set->setCursorType(cursor);
        set->open(u"select name from people"_s, connection);
        return set->recordCount();
    };
    EXPECT_EQ(countOf(CursorType::ForwardOnly), -1);
    EXPECT_EQ(countOf(CursorType::Static), 0);
    connection->setCursorLocation(CursorLocation::Client);
    EXPECT_EQ(countOf(CursorType::ForwardOnly), 0);
}

TEST_F(Moves, AFilterSelectsRows)
{
    addPeople({u"Ann"_s, u"bob"_s, u"O''Hara"_s, u"\u0645\u0631\u0649"_s, u"ann b"_s});
    connection->execute(u"update people set note='x' where [group]=2"_s);
    const RecordsetPtr set = opened(u"select [group],name,amount,valid,dob,note from people"_s);
    const auto shows = [&](const QString &filter) -> std::string {
        set->setFilter({});
        const std::string result = outcome([&] { set->setFilter(filter); });
        if (result != "ok")
            return result.substr(0, 4);
        QString groups;
        for (int row = 0; row < set->rowCount(); ++row)
            groups += set->valueAt(row, 0).toText();
        return groups.toStdString();
    };
    const std::pair<QString, std::string> cases[] = {
        {u""_s, "12345"},
        {u"valid=true"_s, "135"},
        {u"VALID <> True"_s, "24"},
        {u"name='ANN  '"_s, "1"},
        {u"name='o''hara'"_s, "3"},
        {u"name='\u0645\u0631\u0649'"_s, "4"},
        {u"name like 'ann*'"_s, "15"},
        {u"name like '%b%'"_s, "25"},
        {u"amount>2.5"_s, "345"},
        {u"amount >= 2.50000 and amount<4.5"_s, "23"},
        {u"group=1e0"_s, "1"},
        {u"dob=#02/03/2004#"_s, "3"},
        {u"dob='03/02/2004'"_s, "3"},
        {u"dob<'02/02/2004'"_s, "1"},
        {u"note = null"_s, "1345"},
        {u"note <> 'x'"_s, ""},
        {u"name='ann' or name='bob' and valid=true"_s, "1"},
        {u"( name='ann'  or  name='bob' ) and (valid = false)"_s, "2"},
        {u"((name='ann' or (name='bob')) and (valid=true or group=2))"_s, "12"},
        {u"nobody=1"_s, "3265"},
    };
    for (const auto &[filter, expected] : cases)
        EXPECT_EQ(shows(filter), expected) << filter.left(60).toStdString();
    for (const QString &filter :
         {u"name='O'Hara'"_s, u"name="_s, u"name='a' and"_s, u"(name='a'"_s, u"name='a')"_s, u"name=5"_s,
          u"name=ann"_s, u"group='x'"_s, u"group like '1*'"_s, u"group=1,000"_s, u"amount=1e30"_s,
          u"dob='31/31/2004'"_s, u"valid>null"_s, QString(100000, u'(')})
        EXPECT_EQ(shows(filter), "3001") << filter.left(60).toStdString();

    set->setFilter(u"valid=false"_s);
    EXPECT_EQ(failureOf([&] { set->setFilter(u"valid"_s); }), 3001);
    EXPECT_EQ(set->filter(), u"valid=false"_s); // the one in force stays
    EXPECT_EQ(set->recordCount(), 2);
    set->moveNext();
    EXPECT_EQ(set->absolutePosition(), 2);
    EXPECT_EQ(set->bookmark(), 4);
    EXPECT_EQ(failureOf([&] { set->setBookmark(1); }), 3021);
    set->setBookmark(2);
    EXPECT_EQ(set->value(0), Value(2));
    connection->execute(u"update people set valid=false where [group]=1"_s);
    set->requery(); // the filter stays
    EXPECT_EQ(set->recordCount(), 3);
    EXPECT_EQ(set->value(0), Value(1));
    const RecordsetPtr all = opened(u"select * from people"_s);
    all->setFilter(u"group>2"_s);
    connection->execute(u"drop table people"_s);
    connection->execute(u"select sn into people from settings"_s); // without the filter's column
    EXPECT_EQ(failureOf([&] { all->requery(); }), 3265);
    EXPECT_EQ(all->recordCount(), 3);
    EXPECT_EQ(all->value(u"group"_s), Value(3));
}

TEST_F(Moves, FindStartsAtTheCurrentRow)
{
    addPeople({u"a"_s, u"b"_s, u"c"_s, u"b"_s + u"2"_s});
    connection->execute(u"update people set [group]=1000 where name='b'"_s);
    const RecordsetPtr set = opened(u"select name,[group] from people"_s);
    const auto found = [&](const QString &criterion) {
        const std::string result = outcome([&] { set->find(criterion); });
        return result != "ok" ? result.substr(0, 4) : set->eof() ? "eof" : std::to_string(set->bookmark());
    };
    EXPECT_EQ(found(u"name='B'"_s), "2");
    EXPECT_EQ(found(u"group=1e3"_s), "2"); // inclusive
    EXPECT_EQ(found(u"group=1,000"_s), "3001");
    EXPECT_EQ(found(u"group="_s + QString(10'000, u'9')), "3001");
    EXPECT_EQ(found(u"name='c' and group=3"_s), "3001"); // one column
    EXPECT_EQ(found(u"name='a'"_s), "eof");              // above
    EXPECT_EQ(found(u"name='a'"_s), "3021");
    set->setFilter(u"group<>3"_s);
    EXPECT_EQ(found(u"name='c'"_s), "eof"); // hidden
}

TEST_F(Moves, WhatARowLooksUpElsewhereIsReadAnewEachTime)
{
    addPeople({u"a"_s, u"b"_s, u"c"_s, u"d"_s});
    connection->execute(u"update people set [group]=null where name='d'"_s);
    connection->execute(u"update people set [group]=1 where name='c'"_s);
    connection->execute(u"insert into settings (id,sn) values(1,10)"_s);
    const QString lookUp =
        u"select name,(select sn from settings where group=settings.id) as x from people"_s;
    const RecordsetPtr set = opened(lookUp);
    EXPECT_EQ(shown(*set), "a 10,b null,c 10,d null");
    set->setValue(0, u"e"_s);
    set->update();
    EXPECT_EQ(failureOf([&] { set->setValue(1, 5); }), -2147217887); // an expression
    connection->execute(u"update settings set sn=20"_s);
    connection->execute(u"insert into settings (id,sn) values(2,30)"_s);
    set->requery();
    EXPECT_EQ(shown(*set), "e 20,b 30,c 20,d null");
    EXPECT_EQ(shown(*opened(lookUp + u" order by 2 desc,name"_s)), "b 30,c 20,e 20,d null");
}

TEST_F(Moves, ClonesShareTheRowsUntilARequery)
{
    addPeople({u"a"_s, u"b"_s});
    const RecordsetPtr set = table();
    set->setFilter(u"name='b'"_s);
    const RecordsetPtr copy = set->clone();
    EXPECT_EQ(copy->recordCount(), 2);
    EXPECT_EQ(copy->absolutePosition(), 1);
    copy->setValue(u"note"_s, u"new"_s);
    EXPECT_TRUE(copy->clone()->value(u"note"_s).isNull()); // pending edits are not shared
    copy->update();
    addRow(*copy, u"c"_s);
    EXPECT_EQ(set->recordCount(), 1);
    set->setFilter({});
    EXPECT_EQ(set->recordCount(), 3);
    EXPECT_EQ(set->value(u"note"_s), Value(u"new"_s));
    connection->execute(u"delete from people"_s);
    copy->requery();
    EXPECT_EQ(copy->recordCount(), 0);
    EXPECT_EQ(set->recordCount(), 3);
    set->close();
    EXPECT_TRUE(copy->eof());
}
