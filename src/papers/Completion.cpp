#include "papers/Completion.h"

namespace swabby {
namespace {

QString dashed(const QString &option)
{
    return QStringLiteral("--") + option;
}

QString dashed(const QStringList &options)
{
    return options.isEmpty() ? QString() : dashed(options.join(QStringLiteral(" --")));
}

/// In single quotes of any of the shells.
QString quoted(QString text)
{
    return QLatin1Char('\'') + text.replace(QLatin1Char('\''), QStringLiteral("'\\''")) + QLatin1Char('\'');
}

/// The text with every mark that zsh would take for its own escaped.
QString plain(QString text)
{
    for (const char mark : {'[', ']', ':'})
        text.replace(QLatin1Char(mark), QStringLiteral("\\") + QLatin1Char(mark));
    return text;
}

QStringList names(const CommandWords &program)
{
    QStringList all;
    for (const VerbWords &verb : program.verbs)
        all.append(verb.name());
    return all;
}

/// Every option that is no verb's own.
QString commonOptions(const CommandWords &program)
{
    QStringList common;
    for (const OptionWords &option : program.options) {
        bool isCommon = true;
        for (const VerbWords &verb : program.verbs)
            isCommon = isCommon && verb.options.contains(option.name);
        if (isCommon)
            common.append(option.name);
    }
    return dashed(common);
}

QString bashVerbs(const CommandWords &program)
{
    QString cases;
    for (const VerbWords &verb : program.verbs) {
        cases +=
            QStringLiteral("        %1)\n            offered='%2'\n").arg(verb.name(), dashed(verb.options));
        if (!verb.operands.isEmpty())
            cases += QStringLiteral("            [[ $before != %1 ]] || offered+=' %2'\n")
                         .arg(verb.name(), verb.operands.join(QLatin1Char(' ')));
        if (verb.takesFolders())
            cases += QStringLiteral("            folders=yes\n");
        cases += QStringLiteral("            ;;\n");
    }
    return cases;
}

/// What may follow each option that has a value.
QString bashValues(const CommandWords &program)
{
    QString cases;
    QStringList free;
    for (const OptionWords &option : program.options) {
        const QString name = dashed(option.name);
        if (option.isFolder())
            cases += QStringLiteral("    %1) folders=yes ;;\n").arg(name);
        else if (!option.takes.isEmpty())
            cases +=
                QStringLiteral("    %1) offered='%2' ;;\n").arg(name, option.takes.join(QLatin1Char(' ')));
        else if (!option.value.isEmpty())
            free.append(name);
    }
    return free.isEmpty() ? cases
                          : cases + QStringLiteral("    %1) ;;\n").arg(free.join(QStringLiteral(" | ")));
}

} // namespace

QString bashCompletion(const CommandWords &program)
{
    QStringList valued;
    for (const OptionWords &option : program.options)
        if (!option.value.isEmpty())
            valued.append(dashed(option.name));
    return QStringLiteral(R"(# Completion of %1 for bash, made from the program's own tables.
_%1()
{
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} verb='' offered='' folders='' index
    for ((index = 1; index < COMP_CWORD; index++)); do
        case ${COMP_WORDS[index]} in
        %2) ((index += 1)) ;;
        -*) ;;
        *) verb=${COMP_WORDS[index]} && break ;;
        esac
    done
    case $before in
%3    *)
        case $verb in
        '') offered='%4' ;;
%5        esac
        ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$offered" -- "$word")
    if [[ -n $folders && $word != -* ]]; then
        compopt -o filenames
        mapfile -t -O ${#COMPREPLY[@]} COMPREPLY < <(compgen -d -- "$word")
    fi
}
complete -F _%1 %1
)")
        .arg(program.name, valued.join(QStringLiteral(" | ")), bashValues(program),
             (names(program).join(QLatin1Char(' ')) + QLatin1Char(' ') + commonOptions(program)).trimmed(),
             bashVerbs(program));
}

QString fishCompletion(const CommandWords &program)
{
    const QString begin = QStringLiteral("complete -c ") + program.name;
    QString text = QStringLiteral("# Completion of %1 for fish, made from the program's own tables.\n%2 -f\n")
                       .arg(program.name, begin);
    for (const VerbWords &verb : program.verbs) {
        text += QStringLiteral("%1 -n __fish_use_subcommand -a %2 -d %3\n")
                    .arg(begin, verb.name(), quoted(verb.does));
        const QString seen =
            QStringLiteral("%1 -n '__fish_seen_subcommand_from %2' -a ").arg(begin, verb.name());
        if (!verb.operands.isEmpty())
            text += seen + quoted(verb.operands.join(QLatin1Char(' '))) + QLatin1Char('\n');
        if (verb.takesFolders())
            text += seen + QStringLiteral("'(__fish_complete_directories)'\n");
    }
    for (const OptionWords &option : program.options) {
        QStringList owners;
        for (const VerbWords &verb : program.verbs)
            if (verb.options.contains(option.name))
                owners.append(verb.name());
        text += begin;
        if (owners.size() < program.verbs.size())
            text += QStringLiteral(" -n '__fish_seen_subcommand_from %1'").arg(owners.join(QLatin1Char(' ')));
        text += QStringLiteral(" -l ") + option.name;
        if (!option.takes.isEmpty())
            text += QStringLiteral(" -x -a ") + quoted(option.takes.join(QLatin1Char(' ')));
        else if (option.isFolder())
            text += QStringLiteral(" -x -a '(__fish_complete_directories)'");
        else if (!option.value.isEmpty())
            text += QStringLiteral(" -x");
        text += QStringLiteral(" -d %1\n").arg(quoted(option.does));
    }
    return text;
}

QString zshCompletion(const CommandWords &program)
{
    QString text =
        QStringLiteral("#compdef %1\n# Completion of %1 for zsh, made from the program's own tables.\n")
            .arg(program.name);
    QString verbs;
    QString operands;
    for (const VerbWords &verb : program.verbs) {
        verbs += QStringLiteral("    ") + quoted(plain(verb.name()) + QLatin1Char(':') + plain(verb.does)) +
                 QLatin1Char('\n');
        if (!verb.operands.isEmpty())
            operands += QStringLiteral("    %1) _values operand %2 ;;\n")
                            .arg(verb.name(), verb.operands.join(QLatin1Char(' ')));
        else if (verb.takesFolders())
            operands += QStringLiteral("    %1) _directories ;;\n").arg(verb.name());
    }
    text += QStringLiteral("local -a verbs\nverbs=(\n%1)\nlocal state line\n_arguments -C").arg(verbs);
    for (const OptionWords &option : program.options) {
        QString rule = dashed(option.name) + QLatin1Char('[') + plain(option.does) + QLatin1Char(']');
        if (!option.takes.isEmpty())
            rule += QStringLiteral(":%1:(%2)").arg(option.value, option.takes.join(QLatin1Char(' ')));
        else if (!option.value.isEmpty())
            rule += QStringLiteral(":%1:%2").arg(option.value,
                                                 QLatin1String(option.isFolder() ? "_directories" : " "));
        text += QStringLiteral(" \\\n    ") + quoted(rule);
    }
    if (program.verbs.isEmpty())
        return text + QLatin1Char('\n');
    return text + QStringLiteral(
                      " \\\n    '1:verb:->verb' \\\n    '2:operand:->operand'\ncase $state in\nverb) "
                      "_describe verb verbs ;;\noperand)\n    case $line[1] in\n%1    esac\n    ;;\nesac\n")
                      .arg(operands);
}

} // namespace swabby
