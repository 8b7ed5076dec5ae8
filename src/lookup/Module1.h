#pragma once

#include <QString>

/// The text of a piece of HTML: of its body if it has one, runs of blanks collapsed, line breaks for `<p>`,
/// `</div>`, `<br>`, `</tr>` and `</pre>` without attributes, "|" for `</td>`, all other tags dropped. An
/// entity is decoded only if a blank follows somewhere behind it.
///
/// Entities are decoded for Czech pages whose bytes were named as if they were Latin-1, so `&egrave;` is "č".
QString HtmlNaText(const QString& html);
