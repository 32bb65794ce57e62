// The stack of dialogs under any calls: after each of them a plain model says the same.
#include "fuzzing.h"

#include "brovik/base/dialog_stack.h"

#include <QVariant>

#include <algorithm>
#include <map>
#include <memory>
#include <vector>

namespace {

/// A dialog as the stack sees one.
class Dialog : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int above MEMBER above)
    Q_PROPERTY(bool visible MEMBER visible)
    Q_PROPERTY(bool closing MEMBER closing)
    Q_PROPERTY(bool covered READ covered)

public:
    /// From so many on it does not show.
    static constexpr int mostAbove = 2;
    bool covered() const { return above >= mostAbove; }

    int above = -1;
    bool visible = true;
    bool closing = false;
};

/// A popup, which does not know what is above it.
class Popup : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool visible MEMBER visible)

public:
    bool visible = true;
};

/// What the stack is to be, as a list and a map.
class Model
{
public:
    struct Entry
    {
        QObject *dialog = nullptr;
        int description = 0; ///< 0 is none.
    };

    double enter(double id)
    {
        if (entries.contains(id)) {
            return 0;
        }
        return push(id == 0 ? free() : id);
    }

    double enterPopup(double id) { return push(id > 0 ? id : free()); }

    void leave(double id)
    {
        entries.erase(id);
        const auto found = std::find(ids.rbegin(), ids.rend(), id);
        if (found != ids.rend()) {
            ids.erase(std::next(found).base());
            ++changes;
        }
    }

    void forget(const QObject *dialog)
    {
        for (auto &[id, entry] : entries) {
            entry.dialog = entry.dialog == dialog ? nullptr : entry.dialog;
        }
        above.erase(dialog);
    }

    Entry entry(double id) const
    {
        const auto found = entries.find(id);
        return found != entries.end() ? found->second : Entry();
    }
    double top() const { return ids.empty() ? 0 : ids.back(); }

    void count()
    {
        int showing = 0;
        for (auto id = ids.rbegin(); id != ids.rend(); ++id) {
            const QObject *const shown = entry(*id).dialog;
            const auto *const dialog = qobject_cast<const Dialog *>(shown);
            if (showing >= drawn && dialog != nullptr && above[dialog] >= Dialog::mostAbove) {
                return;
            }
            if (dialog != nullptr) {
                above[dialog] = showing;
            }
            const auto *const popup = qobject_cast<const Popup *>(shown);
            showing += (dialog != nullptr && dialog->visible && !dialog->closing) ||
                       (popup != nullptr && popup->visible);
        }
    }

    std::vector<double> ids;
    std::map<double, Entry> entries;
    std::map<const QObject *, int> above; ///< Of each dialog that lives.
    int drawn = 1;
    int changes = 0;

private:
    double free()
    {
        while (entries.contains(nextFree)) {
            --nextFree;
        }
        return nextFree--;
    }

    double push(double id)
    {
        ids.push_back(id);
        ++changes;
        return id;
    }

    double nextFree = -1;
};

/// The stack and the model side by side.
class Run
{
public:
    explicit Run(FuzzedDataProvider &data)
        : m_data(data)
    {
        QObject::connect(&m_stack, &DialogStack::countChanged, [this] { ++m_changes; });
    }

    void step()
    {
        switch (m_data.ConsumeIntegralInRange(0, 9)) {
        case 0:
        case 1:
        case 2:
            return open(false);
        case 3:
            return open(true);
        case 4:
        case 5:
            return answer();
        case 6:
            return destroy();
        case 7:
            return change();
        case 8:
            m_stack.countAbove();
            return m_model.count();
        default:
            m_model.drawn = m_data.ConsumeIntegralInRange(0, 4);
            m_stack.setProperty("drawn", m_model.drawn);
        }
    }

    void compare() const
    {
        require(m_stack.count() == static_cast<int>(m_model.ids.size()), "as many are open", m_stack.count());
        require(m_stack.top() == m_model.top(), "the uppermost", m_stack.top(), m_model.top());
        require(m_stack.current() == m_model.entry(m_model.top()).dialog, "the current dialog",
                m_stack.top());
        require(m_changes == m_model.changes, "one signal for each change", m_changes, m_model.changes);
        for (double id : m_model.ids) {
            compare(id);
        }
        for (double id = -12; id < 12; ++id) {
            compare(id);
        }
        for (const auto &[dialog, above] : m_model.above) {
            require(dialog->property("above") == above, "those above", dialog->property("above"), above);
        }
    }

    /// All answers, from the top.
    void closeAll()
    {
        while (!m_model.ids.empty()) {
            leave(m_stack.top());
            compare();
        }
    }

private:
    void compare(double id) const
    {
        const Model::Entry entry = m_model.entry(id);
        require(m_stack.has(id) == m_model.entries.contains(id), "the id is known", id);
        require(m_stack.dialog(id) == entry.dialog, "the dialog of an id", id);
        const QJSValue description = m_stack.description(id);
        require(entry.description == 0 ? description.isNull() : description.toInt() == entry.description,
                "the description of an id", id, description.toString());
    }

    double consumeId()
    {
        constexpr double large = 9007199254740991.0;
        return m_data.ConsumeIntegralInRange(0, 9) == 0 ? m_data.PickValueInArray({large, large - 1, -large})
                                                        : m_data.ConsumeIntegralInRange(-9, 9);
    }

    /// A backend's id, which is none of those that are given here.
    void open(bool asPopup)
    {
        const double wanted = consumeId();
        const double id = asPopup ? m_stack.enterPopup(wanted) : m_stack.enter(wanted);
        require(id == (asPopup ? m_model.enterPopup(wanted) : m_model.enter(wanted)), "the id that was given",
                wanted, id);
        compare();
        if (id == 0) {
            return;
        }
        QObject *const dialog = make(asPopup);
        const int description = m_data.ConsumeIntegralInRange(0, 3);
        m_stack.place(id, dialog,
                      description != 0 ? QJSValue(description) : QJSValue(QJSValue::UndefinedValue));
        m_model.entries[id] = {dialog, description};
        m_model.count();
    }

    QObject *make(bool asPopup)
    {
        if (m_data.ConsumeIntegralInRange(0, 9) == 0) {
            return nullptr;
        }
        if (asPopup) {
            m_dialogs.push_back(std::make_unique<Popup>());
        } else {
            m_dialogs.push_back(std::make_unique<Dialog>());
            m_model.above[m_dialogs.back().get()] = -1;
        }
        return m_dialogs.back().get();
    }

    void answer() { leave(m_data.ConsumeBool() ? m_stack.top() : consumeId()); }

    void leave(double id)
    {
        m_stack.leave(id);
        m_model.leave(id);
        m_model.count();
    }

    void destroy()
    {
        if (!m_dialogs.empty()) {
            const auto index = m_data.ConsumeIntegralInRange<std::size_t>(0, m_dialogs.size() - 1);
            m_model.forget(m_dialogs[index].get());
            m_dialogs.erase(m_dialogs.begin() + static_cast<std::ptrdiff_t>(index));
        }
    }

    void change()
    {
        if (m_dialogs.empty()) {
            return;
        }
        const auto index = m_data.ConsumeIntegralInRange<std::size_t>(0, m_dialogs.size() - 1);
        const bool value = m_data.ConsumeBool();
        if (auto *const dialog = qobject_cast<Dialog *>(m_dialogs[index].get())) {
            (m_data.ConsumeBool() ? dialog->visible : dialog->closing) = value;
        } else if (auto *const popup = qobject_cast<Popup *>(m_dialogs[index].get())) {
            popup->visible = value;
        }
    }

    FuzzedDataProvider &m_data;
    std::vector<std::unique_ptr<QObject>> m_dialogs;
    DialogStack m_stack;
    Model m_model;
    int m_changes = 0;
};

} // namespace

#include "fuzz_dialog_stack.moc"

void fuzzingBegins() {}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    FuzzedDataProvider data(bytes, size);
    Run run(data);
    constexpr int mostSteps = 100;
    for (int step = 0; step < mostSteps && data.remaining_bytes() > 0; ++step) {
        run.step();
        run.compare();
    }
    run.closeAll();
    return 0;
}
