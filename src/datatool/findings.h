#pragma once

#include <QStringList>
#include <functional>
#include <vector>

#include "platform/sqlite.h"

/// What can be wrong with the rows of a pair and is not seen by the program.
namespace findings {

/// What was found of one kind.
struct Kind {
    QString title;
    QStringList lines;  // one for each row: film, title and what is wrong, in Czech
};

/// All kinds, also those without a finding.
/// @param catalogue connection that reads the pictures as schema `pictures`.
/// @param step is told before each kind how many are done, and of how many.
std::vector<Kind> of(const sqlite::Database& catalogue,
                     const std::function<void(qint64 done, qint64 all)>& step);

/// A film in a line of text, such as "Film 12 „Kolja“"; long titles are cut.
QString filmName(const QString& key, const QString& title);

/// SQL condition for a row of tDVD that holds nothing but its key.
QByteArray emptyFilm();

/// SQL condition for a film whose column Jazyk holds what the program cannot turn into a number; Null is
/// none.
QByteArray unreadableLanguage();

/// One of the two picture keys of tDVD.
struct PictureLink {
    QByteArray column;
    QByteArray group;  // SQL literal
    QByteArray name;   // for the user
};
const std::vector<PictureLink>& pictureLinks();
/// SQL condition for a row of tDVD whose key leads to no picture, to another film's or to one of the other
/// group.
QByteArray wrongLink(const PictureLink& link);

}  // namespace findings
