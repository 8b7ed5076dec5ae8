#include "datatool/CommandLine.h"

#include <algorithm>

#include "core/mVerze.h"
#include "platform/errors.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int nameWidth = 24;

/// The user has called the tool in a way that it does not know.
class WrongCall final : public RuntimeError {
 public:
    explicit WrongCall(const QString& what) : RuntimeError(errors::invalidCall, what) {}
};

QString optionText(const CommandOption& option) {
    return option.value.isEmpty() ? option.name : option.name + u' ' + option.value;
}

QString usage(const Command& command) {
    QString text = u"kalvera-data %1 %2"_s.arg(command.name, command.operands);
    for (const CommandOption& option : command.options)
        text += u" [%1]"_s.arg(optionText(option));
    return text;
}

QString row(const QString& name, const QString& help) {
    return u"  %1 %2\n"_s.arg(name.leftJustified(nameWidth), help);
}

QString help(const Command& command) {
    QString text = u"Použití: %1\n\n%2\n"_s.arg(usage(command), command.summary);
    if (!command.options.isEmpty()) text += u"\nVolby:\n"_s;
    for (const CommandOption& option : command.options)
        text += row(optionText(option), option.help);
    if (command.notes != nullptr) text += u'\n' + command.notes();
    return text;
}

QString help(std::span<const Command> commands) {
    QString text =
        u"Použití: kalvera-data PŘÍKAZ …\n\nZakládá, převádí, kontroluje, opravuje a zálohuje datové soubory "
        "a přenáší\nfilmy mezi katalogem a tabulkami. Kontrola, oprava, záloha a obnova bez SLOŽKY\npracují "
        "s katalogem, který by otevřel program. Záloha bez KAM vznikne ve složce\nZálohy Kalvéra "
        "v dokumentech.\n\nPříkazy:\n"_s;
    for (const Command& command : commands)
        text += row(command.name + u' ' + command.operands, command.summary);
    return text + u"\nVolby:\n"_s + row(u"PŘÍKAZ --help, -h"_s, u"popíše příkaz a jeho volby"_s) +
           row(u"--version"_s, u"vypíše verzi"_s) + u"\nNávratové kódy:\n"_s + row(u"0"_s, u"hotovo"_s) +
           row(u"1"_s, u"chyba; pokud zpráva neříká jinak, nic se nezměnilo"_s) +
           row(u"2"_s, u"chybné volání"_s) +
           row(u"3"_s, u"hotovo, ale něco chybí, nesouhlasí nebo zbývá a zpráva říká co"_s);
}

const Command& find(std::span<const Command> commands, const QString& name) {
    const auto found = std::find_if(commands.begin(), commands.end(),
                                    [&name](const Command& command) { return command.name == name; });
    if (found == commands.end()) throw WrongCall(u"Neznámý příkaz: %1"_s.arg(name));
    return *found;
}

void checkOperands(const Command& command, const QStringList& operands) {
    const qsizetype count = operands.size();
    const qsizetype most = command.operands.split(u' ', Qt::SkipEmptyParts).size();
    if (count < most - command.operands.count(u'[')) throw WrongCall(u"Příkazu chybí některý údaj."_s);
    if (count > most) throw WrongCall(u"Příkaz dostal víc údajů, než čeká."_s);
    // Taken as a path, it would be the current folder.
    if (operands.contains(QString())) throw WrongCall(u"Údaj příkazu je prázdný."_s);
}

void readOption(const Command& command, QStringList& rest, CommandCall& call) {
    const QString argument = rest.takeFirst();
    const QString name = argument.section(u'=', 0, 0);
    const auto option =
        std::find_if(command.options.begin(), command.options.end(),
                     [&name](const CommandOption& candidate) { return candidate.name == name; });
    if (option == command.options.end()) throw WrongCall(u"Neznámá volba: %1"_s.arg(argument));
    const bool hasValue = argument.contains(u'=');
    if (hasValue && option->value.isEmpty())
        throw WrongCall(u"Volba %1 žádnou hodnotu nepřijímá."_s.arg(name));
    if (!hasValue && !option->value.isEmpty() && rest.isEmpty())
        throw WrongCall(u"Volbě %1 chybí hodnota."_s.arg(name));
    QString& value = call.options[name];
    if (hasValue) value = argument.section(u'=', 1);
    if (!hasValue && !option->value.isEmpty()) value = rest.takeFirst();
}

void read(const Command& command, QStringList rest, CommandCall& call) {
    while (!rest.isEmpty()) {
        if (rest.first() == u"--"_s) {
            call.operands += rest.mid(1);
            break;
        }
        if (rest.first().startsWith(u'-') && rest.first().size() > 1) {
            readOption(command, rest, call);
        } else {
            call.operands += rest.takeFirst();
        }
    }
    checkOperands(command, call.operands);
}

bool isHelp(const QString& argument) {
    return argument == u"--help"_s || argument == u"-h"_s;
}

int runNamed(const Command& command, const QStringList& rest, QTextStream& output, QTextStream& errors) {
    const auto endOfOptions = std::find(rest.begin(), rest.end(), u"--"_s);
    if (std::any_of(rest.begin(), endOfOptions, isHelp)) {
        output << help(command);
        return 0;
    }
    CommandCall call{{}, {}, output, errors};
    try {
        read(command, rest, call);
    } catch (const WrongCall& failure) {
        errors << u"Chyba: %1\nPoužití: %2\n"_s.arg(failure.description(), usage(command));
        return exitUsage;
    }
    return command.run(call);
}

/// runCommand without regard to whether the output arrives.
int runFirst(std::span<const Command> commands, const QStringList& arguments, QTextStream& output,
             QTextStream& errors) {
    try {
        if (arguments.isEmpty()) throw WrongCall(u"Chybí příkaz."_s);
        const QString& first = arguments.first();
        if (isHelp(first)) {
            output << help(commands);
            return 0;
        }
        if (first == u"--version"_s) {
            output << u"kalvera-data %1\n"_s.arg(verze::text());
            return 0;
        }
        return runNamed(find(commands, first), arguments.mid(1), output, errors);
    } catch (const WrongCall& failure) {
        errors << u"Chyba: %1\nPoužití: kalvera-data PŘÍKAZ …; všechny příkazy ukáže kalvera-data --help\n"_s
                      .arg(failure.description());
        return exitUsage;
    } catch (const RuntimeError& failure) {
        errors << u"Chyba: %1\n"_s.arg(failure.description());
        return 1;
    }
}

}  // namespace

int runCommand(std::span<const Command> commands, const QStringList& arguments, QTextStream& output,
               QTextStream& errors) {
    const int exitCode = runFirst(commands, arguments, output, errors);
    output.flush();
    if (output.status() == QTextStream::Ok) return exitCode;
    errors << u"Chyba: Výpis nelze zapsat. Příkaz sám skončil s kódem %1.\n"_s.arg(exitCode);
    return 1;
}
