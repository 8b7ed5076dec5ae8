#pragma once

#include <QHash>
#include <QVariant>
#include <QWidget>

/// All that can be entered in a form, to tell whether anything was: texts, chosen entries, ticks and options,
/// and captions, in which forms keep the paths of pictures.
namespace formContent {

/// By control; the order of controls changes when one is raised above others.
using Content = QHash<const QWidget*, QVariant>;

/// The content of all controls of a window, shown or hidden. Equal contents compare equal.
Content of(const QWidget& form);

}  // namespace formContent
