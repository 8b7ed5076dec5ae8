#pragma once

#include <QString>

/// The text of a piece of HTML: the body alone when there is one, runs of blanks as one, line breaks for
/// `<p>`,
/// `</div>`, `<br>`, `</tr>` and `</pre>` when they have no attributes, "|" for `</td>`, no other tag, and
/// entities replaced that a blank follows anywhere.
///
/// Entities are read for Czech pages whose bytes had been named as if they were Latin-1, so `&egrave;` is
/// "č".
QString HtmlNaText(const QString& html);
