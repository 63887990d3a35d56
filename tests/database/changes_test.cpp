#include "database/temp_store.h"
#include "platform/database/errors.h"

// Edits and new rows.

using Changes = TempStore;

TEST_F(Changes, ANewRowIsWrittenWithItsCounterAndDefaults)
{
    const RecordsetPtr set = opened(u"select note,name,id,valid,married from people order by name"_s);
    set->addNew();
    EXPECT_EQ(set->editMode(), EditMode::Add);
    EXPECT_FALSE(set->eof());
    EXPECT_EQ(set->absolutePosition(), positionUnknown);
    EXPECT_EQ(set->recordCount(), 0);
    EXPECT_TRUE(set->originalValue(u"valid"_s).isNull());
    set->setValue(u"NAME"_s, u"b"_s);
    EXPECT_EQ(set->value(1), Value(u"b"_s));
    EXPECT_EQ(rows(u"select name from people"_s), "");
    set->addNew(); // saves the first
    EXPECT_EQ(rows(u"select id,name,valid,married from people"_s), "1 b True False");
    set->setValue(1, u"a"_s);
    set->moveFirst();                                                  // saves the second
    EXPECT_EQ(shown(*set), "null b 1 True False,null a 2 True False"); // in the order of adding
    addRow(*set, u"c"_s);
    EXPECT_EQ(set->absolutePosition(), 3);
    set->moveNext();
    EXPECT_TRUE(set->eof());
    set->addNew();
    set->cancelUpdate();
    EXPECT_TRUE(set->eof()); // back where it was
    EXPECT_EQ(rows(u"select id,name from people"_s), "1 b,2 a,3 c");
}

// Such a set reads its rows when they are first looked at; nobody may notice.
TEST_F(Changes, AWholeTableOpenForWritingStandsOnTheRowAddedLast)
{
    addPeople({u"a"_s, u"b"_s});
    const RecordsetPtr set = table();
    addRow(*set, u"c"_s);
    connection->execute(u"insert into people (name) values('d')"_s);
    set->addNew();
    set->cancelUpdate();
    EXPECT_EQ(set->value(u"name"_s), Value(u"c"_s));
    EXPECT_EQ(set->absolutePosition(), 3);
    EXPECT_EQ(set->recordCount(), 4);

    const RecordsetPtr edited = table();
    EXPECT_FALSE(edited->eof());
    edited->setValue(u"name"_s, u"z"_s);
    edited->update();
    EXPECT_EQ(rows(u"select name from people order by id"_s), "z,b,c,d");

    const RecordsetPtr empty = table(u"settings"_s);
    EXPECT_EQ(failureOf([&] { empty->value(u"sn"_s); }), 3021);
    EXPECT_EQ(failureOf([&] { table(u"settings"_s)->setValue(u"sn"_s, 1); }), 3021);
    connection->execute(u"drop table [settings]"_s);
    EXPECT_EQ(outcome([&] { empty->requery(); }), "-2147217865 The database engine cann");
    EXPECT_EQ(empty->fieldCount(), 2);
}

TEST_F(Changes, CountersGoOnFromTheLargestNumber)
{
    const RecordsetPtr set = table();
    const auto add = [&](const char *name, std::optional<qint32> id) {
        set->addNew();
        set->setValue(u"name"_s, QString::fromLatin1(name));
        if (id)
            set->setValue(u"id"_s, *id);
        set->update();
        return set->value(u"id"_s).toInt();
    };
    EXPECT_EQ(add("a", {}), 1);
    EXPECT_EQ(add("b", 7), 7);
    EXPECT_EQ(add("c", {}), 8);
    EXPECT_EQ(add("d", 7), 7); // repeated on purpose
    connection->execute(u"delete from people where id>1"_s);
    EXPECT_EQ(add("e", {}), 9); // a deleted number does not come back
    connection->beginTrans();
    EXPECT_NE(outcome([&] { connection->execute(u"insert into people (name) values('a')"_s); }), "ok");
    EXPECT_EQ(add("f", {}), 10); // the refused row drew none
    connection->rollbackTrans();
    EXPECT_EQ(add("g", {}), 10);                                            // one that was rolled back does
    EXPECT_EQ(failureOf([&] { set->setValue(u"id"_s, 11); }), -2147217887); // or it would come again
    EXPECT_EQ(set->editMode(), EditMode::None);
}

TEST_F(Changes, AnEditIsKeptUntilUpdateOrCancel)
{
    addPeople({u"a"_s, u"b"_s});
    const RecordsetPtr set = table();
    set->setValue(u"note"_s, u"one"_s);
    EXPECT_EQ(set->editMode(), EditMode::InProgress);
    EXPECT_EQ(set->value(u"note"_s), Value(u"one"_s));
    EXPECT_EQ(set->valueAt(0, 2), Value(u"one"_s));
    EXPECT_TRUE(set->originalValue(u"note"_s).isNull());
    EXPECT_EQ(failureOf([&] { set->close(); }), 3219);
    EXPECT_EQ(failureOf([&] { set->requery(); }), 3219);
    set->cancelUpdate();
    EXPECT_TRUE(set->value(u"note"_s).isNull());
    set->setValue(u"note"_s, u"two"_s);
    set->setValue(u"amount"_s, u"33.33335"_s); // half to even
    set->setValue(u"dob"_s, u"5/4/2004 3:02"_s);
    set->setValue(u"married"_s, Value());
    set->moveNext(); // saves
    EXPECT_EQ(set->editMode(), EditMode::None);
    EXPECT_EQ(rows(u"select note,amount,dob,married from people"_s),
              "two 33.3334 05/04/2004 03:02:00 False,null 2.5 02/02/2004 False");
    set->movePrevious();
    EXPECT_EQ(set->originalValue(u"note"_s), Value(u"two"_s));
    connection->execute(u"update people set note='three' where name='a'"_s);
    connection->execute(u"delete from people where name='b'"_s);
    connection->execute(u"insert into people (name) values('c')"_s);
    EXPECT_EQ(set->value(u"note"_s), Value(u"two"_s));
    set->resync();
    EXPECT_EQ(set->value(u"note"_s), Value(u"three"_s));
    EXPECT_EQ(set->recordCount(), 2);
    set->moveNext();
    set->setValue(u"note"_s, u"x"_s); // the row is gone, and its row id belongs to "c"
    EXPECT_EQ(outcome([&] { set->update(); }), "-2147217864 Row cannot be located fo");
    set->cancelUpdate();
    EXPECT_EQ(rows(u"select name,note from people"_s), "a three,c null");
}

TEST_F(Changes, AnAliasStaysUpdatableAndAnExpressionIsNot)
{
    connection->execute(u"insert into settings (sn) values(6)"_s);
    const RecordsetPtr set = opened(u"select sn as maxid,SN,sn+1 from settings as s order by s.sn"_s);
    EXPECT_EQ(set->field(1).name + set->field(2).name, u"SNExpr1000"_s);
    set->setValue(u"maxid"_s, set->value(u"maxid"_s).toInt() + 1);
    EXPECT_EQ(outcome([&] { set->setValue(2, 1); }), "-2147217887 Multiple-step operation ");
    set->update();
    EXPECT_EQ(rows(u"select sn from settings"_s), "7");
    EXPECT_EQ(set->value(1), Value(7)); // the same column once more
    for (const QString &text : {u"select distinct sn from settings"_s, u"select sum(sn) as s from settings"_s,
                                u"select sn from settings group by sn"_s})
        EXPECT_EQ(failureOf([&] { opened(text)->addNew(); }), 3251);
    EXPECT_EQ(
        failureOf([&] { opened(u"settings"_s, LockType::ReadOnly, CommandKind::Table)->setValue(1, 2); }),
        3251);
    EXPECT_TRUE(opened(u"[settings]"_s, LockType::Pessimistic, CommandKind::Table)->isUpdatable());
}

TEST_F(Changes, AValueThatDoesNotFitIsRefused)
{
    addPeople({u"a"_s, u"b"_s});
    const RecordsetPtr set = table();
    const QString multipleStep = u"-2147217887 Multiple-step operation "_s;
    const QString tooSmall = u"-2147217887 The field is too small t"_s;
    const std::tuple<QString, Value, QString> cases[] = {
        {u"rank"_s, 256, multipleStep},
        {u"rank"_s, -1, multipleStep},
        {u"rank"_s, u""_s, multipleStep},
        {u"group"_s, 2147483648.0, multipleStep},
        {u"amount"_s, 1e15, multipleStep},
        {u"dob"_s, u"30/02/2004"_s, multipleStep},
        {u"married"_s, u"yes"_s, multipleStep},
        {u"name"_s, u"123456789\U0001F600"_s, tooSmall},                 // in UTF-16 units
        {u"name"_s, QString(QChar()) + QString(5, u'\u0645'), tooSmall}, // behind a NUL in bytes
        {u"name"_s, u"12345678\U0001F600"_s, u"ok"_s},
        {u"note"_s, u""_s, u"ok"_s},
        {u"group"_s, u"8.25"_s, u"ok"_s},
        {u"rank"_s, Value(), u"ok"_s},
    };
    for (const auto &[field, value, expected] : cases)
        EXPECT_EQ(outcome([&, field = field, value = value] { set->setValue(field, value); }),
                  expected.toStdString())
            << field.toStdString();
    set->update();
    EXPECT_EQ(rows(u"select note,[group],rank from people where id=1"_s), " 8 null");

    // What only the store can tell leaves the edit open and the row as it was.
    set->setValue(u"name"_s, u""_s);
    EXPECT_EQ(outcome([&] { set->update(); }), "-2147217887 Field 'name' cannot be a");
    set->setValue(u"name"_s, u"B "_s);
    EXPECT_EQ(outcome([&] { set->moveNext(); }), "-2147467259 The changes you requeste");
    EXPECT_EQ(set->editMode(), EditMode::InProgress);
    EXPECT_EQ(set->absolutePosition(), 1);
    set->cancelUpdate();
    set->addNew();
    set->setValue(u"name"_s, u"b"_s);
    EXPECT_EQ(outcome([&] { set->update(); }), "-2147467259 The changes you requeste");
    EXPECT_EQ(set->editMode(), EditMode::Add);
    set->cancelUpdate();
    addRow(*set, u"d"_s);
    EXPECT_EQ(set->value(u"id"_s), Value(3)); // the refused row drew no number
}

TEST_F(Changes, HandlersHearReasonsAndMayRefuse)
{
    addPeople({u"a"_s});
    const RecordsetPtr set = table();
    std::string heard;
    std::optional<ChangeReason> refused;
    std::function<void()> inside = [] {};
    set->willChangeRecord.connect([&](RecordChange &change) {
        heard +=
            std::to_string(int(change.reason)) + ' ' + set->value(u"note"_s).toText().toStdString() + ',';
        inside();
        change.cancel = change.reason == refused;
    });
    set->fieldChanged.connect([&](int index) { heard += 'f' + std::to_string(index) + ','; });
    const auto taken = [&heard] { return std::exchange(heard, {}); };

    set->setValue(u"note"_s, u"x"_s);
    set->setValue(u"rank"_s, 1);
    set->update();
    EXPECT_EQ(taken(), "11 ,f2,f3,3 x,");
    set->setValue(u"note"_s, u"y"_s);
    set->cancelUpdate();
    EXPECT_EQ(taken(), "11 x,f2,4 y,f2,");
    set->addNew();
    set->setValue(u"note"_s, u"z"_s);
    set->cancelBatch();
    EXPECT_EQ(taken(), "1 x,f2,5 z,");

    refused = ChangeReason::FirstChange;
    EXPECT_EQ(failureOf([&] { set->setValue(u"note"_s, u"q"_s); }), 3712);
    EXPECT_EQ(set->editMode(), EditMode::None);
    refused = ChangeReason::Update;
    set->setValue(u"note"_s, u"q"_s);
    EXPECT_EQ(failureOf([&] { set->updateBatch(); }), 3712);
    EXPECT_EQ(set->editMode(), EditMode::InProgress);
    set->cancelUpdate();
    EXPECT_EQ(rows(u"select note,rank from people"_s), "x 1");

    refused.reset();
    const std::vector<std::function<void()>> barred = {
        [&] { set->moveNext(); }, [&] { set->setValue(2, u"w"_s); }, [&] { set->update(); },
        [&] { set->addNew(); },   [&] { set->requery(); },           [&] { set->close(); }};
    for (const auto &call : barred) {
        inside = [&] { EXPECT_EQ(failureOf(call), 3710); };
        set->setValue(u"note"_s, u"x"_s);
        inside = [] {};
        set->cancelUpdate();
    }
    inside = [] { throw data_errors::noSuchItem(); }; // reaches the caller, and the set can be used again
    EXPECT_EQ(failureOf([&] { set->setValue(u"note"_s, u"x"_s); }), 3265);
    inside = [&] { connection->close(); };
    EXPECT_EQ(failureOf([&] { set->setValue(u"note"_s, u"x"_s); }), 3704);
}
