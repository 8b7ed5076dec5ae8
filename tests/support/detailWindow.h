#pragma once

#include <QMap>
#include <functional>

#include "lookup/mDetail.h"
#include "platform/errors.h"

/// A window that a reading of a film fills, without a window.
class RecordingDetailWindow final : public csfd::DetailWindow {
 public:
    int selectedRow() const override {
        if (path.isNull()) throw RuntimeError(errors::objectNotSet);
        return row;
    }
    QString selectedPath() const override {
        if (path.isNull()) throw RuntimeError(errors::objectNotSet);
        return path;
    }
    QString text(csfd::Field field) const override { return fields.value(field); }
    void setText(csfd::Field field, const QString& text) override { fields[field] = text; }
    void clearOtherTitles() override {
        titles.clear();
        fields.remove(csfd::Field::originalTitle);
    }
    void addOtherTitle(const QString& title) override { titles += title; }
    void showPoster(const QString& file) override {
        if (posterIsNoPicture) throw RuntimeError(errors::invalidPicture);
        poster = file;
    }
    void showPosterChoice() override {}
    void untickPosterChoice() override { posterWanted = false; }
    void showStage(const QString& caption) override { stages += caption; }
    void showWait() override { waits = true; }
    void hideWait() override { waits = false; }
    void repaintFields() override {}
    void yield() override {
        if (onYield) onYield();
    }

    int row = 0;
    QString path = QStringLiteral("1-DUM/");
    bool posterIsNoPicture = false;

    QMap<csfd::Field, QString> fields;
    QStringList titles;
    QStringList stages;
    QString poster;
    bool posterWanted = true;
    bool waits = false;
    std::function<void()> onYield;
};
