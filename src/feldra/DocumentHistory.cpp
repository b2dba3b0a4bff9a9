#include "feldra/DocumentHistory.h"

#include "feldra/DocumentFile.h"
#include "feldra/DocumentRecords.h"
#include "feldra/DocumentState.h"

#include <vector>

namespace feldra {

namespace {

// One record a step changed: its values before and after the step.
class RecordChange {
public:
    virtual ~RecordChange() = default;
    virtual void Undo() = 0;
    virtual void Redo() = 0;
};

template <class T>
class ValueChange final : public RecordChange {
public:
    ValueChange(std::shared_ptr<T> record, T before, T after)
        : record_(std::move(record)), before_(std::move(before)), after_(std::move(after))
    {
    }
    void Undo() override { *record_ = before_; }
    void Redo() override { *record_ = after_; }

private:
    std::shared_ptr<T> record_;
    T before_;
    T after_;
};

using Changes = std::vector<std::unique_ptr<RecordChange>>;

} // namespace

// ---- the copy of the records ---------------------------------------------------

struct DocumentHistory::RecordCopy {
    virtual ~RecordCopy() = default;
    quint64 generation = 0; // the last walk that found the record in the document
};

template <class T>
struct DocumentHistory::RecordCopyOf final : RecordCopy {
    RecordCopyOf(std::shared_ptr<T> r, quint64 g) : record(std::move(r)), value(*record) { generation = g; }
    std::shared_ptr<T> record; // keeps the address the copy is filed under taken
    T value;
};

// ---- a step --------------------------------------------------------------------

class DocumentHistory::ChangeStep final : public QUndoCommand {
public:
    ChangeStep(QString name, int command, Changes changes)
        : name_(std::move(name)), command_(command), changes_(std::move(changes))
    {
    }
    const QString& Name() const { return name_; }
    int Command() const { return command_; }

    // True when the document reads the same before and after the step: its
    // records were only replaced by equal ones (Auto Sync finding the
    // synchronisations the part has), or it changed nothing at all.
    bool ChangesNothing(const DocumentData& document)
    {
        if (changes_.empty())
            return true;
        const QByteArray after = WriteDocument(document);
        undo();
        const QByteArray before = WriteDocument(document);
        for (const auto& change : changes_)
            change->Redo();
        return before == after;
    }

    void undo() override
    {
        for (auto it = changes_.rbegin(); it != changes_.rend(); ++it)
            (*it)->Undo();
    }
    // The push runs redo once: the changes are made already.
    void redo() override
    {
        if (!done_) {
            done_ = true;
            return;
        }
        for (const auto& change : changes_)
            change->Redo();
    }

private:
    QString name_;
    int command_;
    Changes changes_;
    bool done_ = false;
};

// ---- the history ---------------------------------------------------------------

DocumentHistory::DocumentHistory(DocumentState& document) : document_(document)
{
    connect(&stack_, &QUndoStack::indexChanged, this, &DocumentHistory::afterIndexChange);
}

// The stack clears itself as it goes, which is no undo.
DocumentHistory::~DocumentHistory() { disconnect(&stack_, nullptr, this, nullptr); }

void DocumentHistory::Start()
{
    if (!copied_)
        takeCopy();
}

void DocumentHistory::BeforeChange()
{
    Start();
    pending_ = true;
    document_.modified = true;
}

void DocumentHistory::takeCopy()
{
    copy_.clear();
    ++generation_;
    ForEachRecord(document_.data, [this](const auto& record) {
        using T = typename std::decay_t<decltype(record)>::element_type;
        copy_.try_emplace(record.get(), std::make_unique<RecordCopyOf<T>>(record, generation_));
    });
    copied_ = true;
    pending_ = false;
}

bool DocumentHistory::Commit(const QString& name, int command, const Titler& title)
{
    if (!pending_)
        return false;
    pending_ = false;
    Changes changes;
    ++generation_;
    ForEachRecord(document_.data, [this, &changes](const auto& record) {
        using T = typename std::decay_t<decltype(record)>::element_type;
        auto& slot = copy_[record.get()];
        auto* copy = dynamic_cast<RecordCopyOf<T>*>(slot.get());
        if (!copy) { // a record new to the document
            slot = std::make_unique<RecordCopyOf<T>>(record, generation_);
            return;
        }
        copy->generation = generation_;
        if (copy->value == *record)
            return;
        changes.push_back(std::make_unique<ValueChange<T>>(record, copy->value, *record));
        copy->value = *record;
    });
    // Records taken out of the document live on in the values of the step.
    std::erase_if(copy_, [this](const auto& entry) { return entry.second->generation != generation_; });
    auto* step = new ChangeStep(name, command, std::move(changes));
    if (step->ChangesNothing(document_.data)) {
        delete step;
        document_.modified = !stack_.isClean();
        return false;
    }
    step->setText(title ? title(name, command) : name);
    pushing_ = true;
    stack_.push(step);
    pushing_ = false;
    document_.modified = !stack_.isClean();
    return true;
}

void DocumentHistory::Retitle(const Titler& title)
{
    for (int i = 0; i < stack_.count(); ++i) {
        auto* step = const_cast<ChangeStep*>(static_cast<const ChangeStep*>(stack_.command(i)));
        step->setText(title(step->Name(), step->Command()));
    }
}

void DocumentHistory::Adopt()
{
    if (!pending_)
        return;
    takeCopy();
    document_.modified = true;
}

void DocumentHistory::MarkSaved()
{
    stack_.setClean();
    document_.modified = pending_;
}

// After an undo or redo the copy is taken again: the records' values are now
// those of another step.
void DocumentHistory::afterIndexChange()
{
    if (pushing_)
        return;
    takeCopy();
    document_.modified = !stack_.isClean();
    emit Restored();
}

} // namespace feldra
