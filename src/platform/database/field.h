#pragma once

#include "platform/runtime/value.h"

#include <QtCore/QString>

/// The types of fields, numbered as the data objects number them.
enum class FieldType { Long = 3, Double = 5, Money = 6, Date = 7, Boolean = 11, Byte = 17, Text = 202 };

/// What a result set tells of one of its fields.
struct FieldInfo {
    QString name; ///< as the statement writes it, or as the table declares it for a whole table
    FieldType type = FieldType::Text;
    int definedSize = 0; ///< text: its size in UTF-16 units; date and money 8, long 4, byte 1, boolean 2
    int attributes = 0;  ///< 122 for a fixed-length column, 106 for text
    QString baseTable; ///< the table and column that the field shows unchanged; both empty for an expression
    QString baseColumn;
    bool counter = false;
};
