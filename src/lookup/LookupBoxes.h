#pragma once

#include <QWidget>
#include <map>

#include "lookup/LookupResult.h"
#include "lookup/LookupWindow.h"

/// The boxes in which a lookup window shows what it found: single lines, a multi-line description, or a combo
/// box with titles.
class LookupBoxes final {
 public:
    LookupBoxes() = default;
    /// @param form names most boxes alike in both windows; the others are passed apart.
    template <typename Form>
    LookupBoxes(const Form& form, QWidget* originalTitle, QWidget* picture)
        : boxes_{{LookupField::czechTitle, form.findCZ},     {LookupField::originalTitle, originalTitle},
                 {LookupField::genre, form.findZanr},        {LookupField::country, form.findStat},
                 {LookupField::year, form.findRok},          {LookupField::length, form.findDelka},
                 {LookupField::director, form.findRezie},    {LookupField::cast, form.findHerci},
                 {LookupField::description, form.findPopis}, {LookupField::picture, picture}} {}

    QString text(LookupField field) const;

    /// Shows a text, truncated to what the box holds (32,767 characters in a single line, 65,535 in several),
    /// so that a broken page does not stall the window.
    void setText(LookupField field, const QString& text) const;

    /// The texts of all boxes.
    LookupResult result(bool withPicture) const;

 private:
    std::map<LookupField, QWidget*> boxes_;
};
