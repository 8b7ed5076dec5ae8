#pragma once

#include <QAbstractItemModel>
#include <QString>

#include "platform/DbValue.h"

/// Stores one setting of the program for the current user.
void UlozNastaveni(const QString& key, const QString& value);

/// Reads one setting of the program; `defaultValue` when it is absent.
QString CtiNastaveni(const QString& key, const QString& defaultValue);

/// Text for a value of `tDVD.Jazyk`: 0 "Česky", 1 "CZ Titulky", any other "Neuvedeno".
QString JazykText(qint32 jazyk);

/// Index of the first entry of a list or combo box whose item data (Qt::UserRole) equals `value`;
/// `defaultIndex` for Null and when no entry has it.
/// @throws RuntimeError 13 or 6 when the value is not Null and no 32-bit number.
qint16 NajdiItemData(const QAbstractItemModel& entries, const DbValue& value, qint16 defaultIndex);
