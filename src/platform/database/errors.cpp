#include "platform/database/errors.h"

using namespace Qt::Literals::StringLiterals;

namespace
{

RuntimeError failure(qint32 number, const QString &description)
{
    return RuntimeError(number, u"database"_s, description);
}

} // namespace

namespace data_errors
{

RuntimeError wrongArguments()
{
    return failure(3001, u"Arguments are of the wrong type, are out of acceptable range, or are in conflict "
                         "with one another."_s);
}

RuntimeError noCurrentRow()
{
    return failure(3021, u"Either BOF or EOF is True, or the current record has been deleted. Requested "
                         "operation requires a current record."_s);
}

RuntimeError notAllowedInContext()
{
    return failure(3219, u"Operation is not allowed in this context."_s);
}

RuntimeError closedInTransaction()
{
    return failure(3246, u"Connection object cannot be explicitly closed while in a transaction."_s);
}

RuntimeError notUpdatable()
{
    return failure(3251, u"Current Recordset does not support updating. This may be a limitation of the "
                         "provider, or of the selected locktype."_s);
}

RuntimeError noSuchItem()
{
    return failure(3265, u"Item cannot be found in the collection corresponding to the requested name or "
                         "ordinal."_s);
}

RuntimeError objectClosed()
{
    return failure(3704, u"Operation is not allowed when the object is closed."_s);
}

RuntimeError objectOpen()
{
    return failure(3705, u"Operation is not allowed when the object is open."_s);
}

RuntimeError invalidConnection()
{
    return failure(3709, u"The connection cannot be used to perform this operation. It is either closed or "
                         "invalid in this context."_s);
}

RuntimeError processingEvent()
{
    return failure(3710, u"Operation cannot be performed while processing event."_s);
}

RuntimeError operationCancelled()
{
    return failure(3712, u"Operation has been cancelled by the user."_s);
}

RuntimeError noTransaction()
{
    return failure(-2147168242, u"No transaction is active."_s);
}

RuntimeError syntax(const QString &description)
{
    return failure(-2147217900, description);
}

RuntimeError unknownParameter()
{
    return failure(-2147217904, u"No value given for one or more required parameters."_s);
}

RuntimeError unknownTable(const QString &name)
{
    return failure(-2147217865, u"The database engine cannot find the input table or query '%1'. Make sure "
                                "it exists and that its name is spelled correctly."_s.arg(name));
}

RuntimeError tableExists(const QString &name)
{
    return failure(-2147217857, u"Table '%1' already exists."_s.arg(name));
}

RuntimeError typeMismatch()
{
    return failure(-2147217913, u"Data type mismatch in criteria expression."_s);
}

RuntimeError duplicateKey()
{
    return failure(-2147467259,
                   u"The changes you requested to the table were not successful because they would create "
                   "duplicate values in the index, primary key, or relationship. Change the data in the "
                   "field or fields that contain duplicate data, remove the index, or redefine the index to "
                   "permit duplicate entries and try again."_s);
}

RuntimeError fieldTooSmall(bool throughRecordset)
{
    return failure(throughRecordset ? -2147217887 : -2147217833,
                   u"The field is too small to accept the amount of data you attempted to add. Try inserting "
                   "or pasting less data."_s);
}

RuntimeError zeroLength(const QString &field)
{
    return failure(-2147217887, u"Field '%1' cannot be a zero-length string."_s.arg(field));
}

RuntimeError multipleStep()
{
    return failure(-2147217887, u"Multiple-step operation generated errors. Check each status value."_s);
}

RuntimeError rowNotLocated()
{
    return failure(-2147217864, u"Row cannot be located for updating. Some values may have been changed "
                                "since it was last read."_s);
}

RuntimeError wrongPassword()
{
    return failure(-2147217843, u"Not a valid password."_s);
}

RuntimeError fileNotFound(const QString &path)
{
    return failure(-2147467259, u"Could not find file '%1'."_s.arg(path));
}

RuntimeError unrecognizedFormat(const QString &path)
{
    return failure(-2147467259, u"Unrecognized database format '%1'."_s.arg(path));
}

RuntimeError engineFailure(const QString &description)
{
    return failure(-2147467259, description);
}

} // namespace data_errors
