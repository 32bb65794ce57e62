// A spin box for numbers with decimals. Its integer value is the number shown times the factor.
import QtQuick
import QtQuick.Controls

SpinBox {
    id: root

    property int precision: 1
    readonly property real factor: Math.pow(10, root.precision)
    readonly property real realValue: root.value / root.factor
    property string prefix
    property string suffix

    stepSize: 1
    inputMethodHints: root.precision > 0 || root.from < 0 ? Qt.ImhFormattedNumbersOnly : Qt.ImhDigitsOnly
    validator: root.prefix || root.suffix ? affixed : plain
    textFromValue: (value, locale) => root.prefix + Number(value / root.factor).toLocaleString(locale, "f", root.precision) + root.suffix
    valueFromText: (text, locale) => privat.parse(text, locale)

    DoubleValidator {
        id: plain

        bottom: Math.min(root.from, root.to) / root.factor
        top: Math.max(root.from, root.to) / root.factor
        decimals: root.precision
        notation: DoubleValidator.StandardNotation
        locale: privat.locale.name
    }

    // What surrounds the number may be typed or left out; the range holds the value in any case.
    RegularExpressionValidator {
        id: affixed

        regularExpression: privat.affixedNumber()
    }

    QtObject {
        id: privat

        function escaped(text: string): string {
            return text.replace(/[.*+?^${}()|[\]\\]/g, "\\$&");
        }

        // Untyped: QML has no name for the type of a locale, and the linter does not know it.
        readonly property var locale: root.locale // qmllint disable type

        function affixedNumber() {
            const point = privat.escaped(privat.locale.decimalPoint);
            const group = privat.escaped(privat.locale.groupSeparator);
            const decimals = root.precision > 0 ? `(?:${point}\\d{0,${root.precision}})?` : "";
            return new RegExp(`^(?:${privat.escaped(root.prefix)})?-?[\\d${group}]*${decimals}(?:${privat.escaped(root.suffix)})?$`);
        }

        function bare(text: string): string {
            const start = text.startsWith(root.prefix) ? root.prefix.length : 0;
            const end = root.suffix && text.endsWith(root.suffix) ? -root.suffix.length : undefined;
            return text.slice(start, end);
        }

        // What is no number leaves the value as it is.
        function parse(text: string, locale: var): int {
            let number = NaN;
            try {
                number = Number.fromLocaleString(locale, privat.bare(text));
            } catch (error) {
                // An unfinished number such as a lone sign.
            }
            return isNaN(number) ? root.value : Math.round(number * root.factor);
        }
    }
}
