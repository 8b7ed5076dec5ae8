#pragma once

#include <QString>

/// The text as it is compared where people write freely: small letters without accents and digits, all else
/// one blank between words.
QString foldedText(const QString& text);
