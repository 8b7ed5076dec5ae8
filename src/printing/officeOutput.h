#pragma once

#include <QString>
#include <map>
#include <memory>
#include <variant>
#include <vector>

/// Output to a spreadsheet and a word processor through late-bound objects. The program does not create such
/// objects yet; `LateBound` is the interface for a bridge to COM or another object model.
namespace office {

class LateBound;
using Object = std::shared_ptr<LateBound>;

/// A value passed to or from an object: empty, number, text or another object.
using Value = std::variant<std::monostate, qint32, QString, Object>;

/// Arguments of a call, by position and by name.
struct Arguments {
    std::vector<Value> byPosition = {};
    std::map<QString, Value> byName = {};
};

/// An object whose properties and methods are looked up by name at each use.
class LateBound {
 public:
    LateBound() = default;
    virtual ~LateBound() = default;
    LateBound(const LateBound&) = delete;
    LateBound& operator=(const LateBound&) = delete;

    /// Reads a property. @throws RuntimeError when there is none.
    virtual Value get(const QString& name) = 0;
    /// Sets a property, which may have an index. @throws RuntimeError when there is none.
    virtual void put(const QString& name, const Arguments& index, const Value& value) = 0;
    /// Calls a method. @throws RuntimeError when there is none or it fails.
    virtual Value call(const QString& name, const Arguments& arguments) = 0;
};

/// Writes `A` to `D` into the columns of that name in one row of a worksheet.
/// @param List the worksheet. @param Radek number of the row, from 1.
/// @throws RuntimeError 91 without a worksheet, and what the worksheet throws.
void PrintDataExcel(const Object& List, qint32 Radek, const QString& A, const QString& B, const QString& C,
                    const QString& D);

/// Types one block at the word processor's cursor: heading and subheading, a line break, the text, and two
/// paragraph ends. Failures are skipped.
/// @param Dokument the word processor.
void PrintDataWord(const Object& Dokument, const QString& Nadpis, const QString& Text,
                   const QString& Podnadpis);

}  // namespace office
