#pragma once

#include "platform/runtime/runtime_error.h"

/// The data layer's failures, each with its number and its words.
namespace data_errors
{
RuntimeError wrongArguments();                        ///< 3001
RuntimeError noCurrentRow();                          ///< 3021
RuntimeError notAllowedInContext();                   ///< 3219
RuntimeError closedInTransaction();                   ///< 3246
RuntimeError notUpdatable();                          ///< 3251, a set that only reads
RuntimeError noSuchItem();                            ///< 3265
RuntimeError objectClosed();                          ///< 3704
RuntimeError objectOpen();                            ///< 3705
RuntimeError invalidConnection();                     ///< 3709
RuntimeError processingEvent();                       ///< 3710
RuntimeError operationCancelled();                    ///< 3712, a handler refused the change
RuntimeError noTransaction();                         ///< -2147168242
RuntimeError syntax(const QString &description);      ///< -2147217900
RuntimeError unknownParameter();                      ///< -2147217904: an unknown column name
RuntimeError unknownTable(const QString &name);       ///< -2147217865
RuntimeError tableExists(const QString &name);        ///< -2147217857
RuntimeError typeMismatch();                          ///< -2147217913
RuntimeError duplicateKey();                          ///< -2147467259
RuntimeError fieldTooSmall(bool throughRecordset);    ///< -2147217833 by statement, -2147217887 by recordset
RuntimeError zeroLength(const QString &field);        ///< -2147217887
RuntimeError multipleStep();                          ///< -2147217887: a value that does not fit its field
RuntimeError rowNotLocated();                         ///< -2147217864
RuntimeError wrongPassword();                         ///< -2147217843
RuntimeError fileNotFound(const QString &path);       ///< -2147467259
RuntimeError unrecognizedFormat(const QString &path); ///< -2147467259
/// Anything else that the store engine reports: a full disk, an I/O error, a lock.
RuntimeError engineFailure(const QString &description); ///< -2147467259
} // namespace data_errors
