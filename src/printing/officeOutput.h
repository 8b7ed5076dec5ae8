#pragma once

#include <QString>
#include <map>
#include <memory>
#include <variant>
#include <vector>

/// Output into the programs of an office suite, reached by the names of what their objects offer. Nothing in
/// the program makes such objects yet; a bridge to COM or to another suite's object model would stand behind
/// `LateBound`.
namespace office {

class LateBound;
using Object = std::shared_ptr<LateBound>;

/// What goes to and comes from an object: empty, number, text or another object.
using Value = std::variant<std::monostate, qint32, QString, Object>;

/// Arguments of a call, by position and by name.
struct Arguments {
    std::vector<Value> byPosition = {};
    std::map<QString, Value> byName = {};
};

/// An object whose properties and methods are found by name when they are used.
class LateBound {
 public:
    LateBound() = default;
    virtual ~LateBound() = default;
    LateBound(const LateBound&) = delete;
    LateBound& operator=(const LateBound&) = delete;

    /// Reads a property. @throws RuntimeError when there is none.
    virtual Value get(const QString& name) = 0;
    /// Sets a property, one with an index too. @throws RuntimeError when there is none.
    virtual void put(const QString& name, const Arguments& index, const Value& value) = 0;
    /// Calls a method. @throws RuntimeError when there is none or it fails.
    virtual Value call(const QString& name, const Arguments& arguments) = 0;
};

/// Writes one row of a worksheet: `A` to `D` into the cells of these columns.
/// @param List the worksheet. @param Radek number of the row, from 1.
/// @throws RuntimeError 91 without a worksheet, and what the worksheet throws.
void PrintDataExcel(const Object& List, qint32 Radek, const QString& A, const QString& B, const QString& C,
                    const QString& D);

/// Types one block where the word processor's cursor stands: heading and subheading on two lines of one
/// paragraph, the text behind, and two ends of paragraph. Whatever fails is skipped.
/// @param Dokument the word processor.
void PrintDataWord(const Object& Dokument, const QString& Nadpis, const QString& Text,
                   const QString& Podnadpis);

}  // namespace office
