#pragma once

#include <QHash>
#include <QStringList>
#include <QTextStream>
#include <span>

/// An option of a command.
struct CommandOption {
    QString name;   // with its dashes
    QString value;  // how help shows its value; "" if it has none
    QString help;
};

/// What the user has called.
struct CommandCall {
    QStringList operands;
    QHash<QString, QString> options;  // by their names; "" for an option without a value
    QTextStream& output;
    QTextStream& errors;

    bool has(const QString& option) const { return options.contains(option); }
};

/// Exit codes: 0 all is done, 1 a failure that changed nothing unless its message says otherwise, and these.
inline constexpr int exitUsage = 2;
/// Done, but something is missing, does not agree or is left, which the output names.
inline constexpr int exitDifference = 3;

/// A command of the tool.
struct Command {
    QString name;
    QString operands;  // as help shows them, those that may be missing in brackets: "SLOŽKA [CÍL]"
    QString summary;
    QList<CommandOption> options;
    /// @return the exit code. @throws RuntimeError
    int (*run)(const CommandCall& call);
    QString (*notes)() = nullptr;  // what help says below the options, lines ended by a line feed
};

/// Runs the command that `arguments` (without the program's name) call, or shows help or the version. A wrong
/// call, a failure and an output that cannot be written are told on `errors`.
/// @return the exit code.
int runCommand(std::span<const Command> commands, const QStringList& arguments, QTextStream& output,
               QTextStream& errors);
