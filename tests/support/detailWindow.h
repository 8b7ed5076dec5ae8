#pragma once

#include <QMap>
#include <functional>

#include "lookup/mDetail.h"
#include "lookup/mObchod.h"
#include "platform/errors.h"

/// The fields of a window that a film is read into, without a window.
template <typename Window>
class RecordedFields : public Window {
 public:
    QString text(LookupField field) const override { return fields.value(field); }
    void setText(LookupField field, const QString& text) override { fields[field] = text; }
    void showWait() override { waits = true; }
    void hideWait() override { waits = false; }
    void yield() override {
        if (onYield) onYield();
    }

    QMap<LookupField, QString> fields;
    bool waits = false;
    std::function<void()> onYield;
};

class RecordingDetailWindow final : public RecordedFields<csfd::DetailWindow> {
 public:
    int selectedRow() const override {
        if (path.isNull()) throw RuntimeError(errors::objectNotSet);
        return row;
    }
    QString selectedPath() const override {
        if (path.isNull()) throw RuntimeError(errors::objectNotSet);
        return path;
    }
    void clearOtherTitles() override {
        titles.clear();
        fields.remove(LookupField::originalTitle);
    }
    void addOtherTitle(const QString& title) override { titles += title; }
    void showPicture(const QString& file) override {
        if (posterIsNoPicture) throw RuntimeError(errors::invalidPicture);
        poster = file;
    }
    void showPosterChoice() override {}
    void untickPosterChoice() override { posterWanted = false; }
    void showStage(const QString& caption) override { stages += caption; }
    void repaintFields() override {}

    int row = 0;
    QString path = QStringLiteral("1-DUM/");
    bool posterIsNoPicture = false;

    QStringList titles;
    QStringList stages;
    QString poster;
    bool posterWanted = true;
};

class RecordingShopWindow final : public RecordedFields<obchod::DetailWindow> {
 public:
    void showPicture(const QString& path) override {
        if (noPicture) throw RuntimeError(errors::invalidPicture);
        picture = path;
    }
    void repaintPicture() override {}
    void stopBrowser() override {}

    QString picture;
    bool noPicture = false;
};
