#include "feldra/DocumentHistory.h"

#include "feldra/DocumentFile.h"
#include "feldra/DocumentRecords.h"
#include "feldra/DocumentState.h"

#include <algorithm>
#include <utility>

namespace feldra {

// ---- the copy of the records ---------------------------------------------------

struct DocumentHistory::RecordCopy {
    virtual ~RecordCopy() = default;
    // The record, taken out of the document since the copy, as a step touched it.
    virtual std::unique_ptr<Touched> TakenOut() const = 0;
    quint64 generation = 0; // the last walk that found the record in the document
};

template <class T>
struct DocumentHistory::RecordCopyOf final : RecordCopy {
    RecordCopyOf(std::shared_ptr<T> r, quint64 g) : record(std::move(r)), value(*record) { generation = g; }
    std::unique_ptr<Touched> TakenOut() const override;
    std::shared_ptr<T> record; // keeps the address the copy is filed under taken
    T value;
};

// ---- what a step touched ---------------------------------------------------------

// A record a step touched: one whose values it changed, with the values before
// and after, or one it only added to the document or took out of it.
class DocumentHistory::Touched {
public:
    virtual ~Touched() = default;
    virtual void Undo() const = 0;
    virtual void Redo() const = 0;
    virtual bool Changed() const = 0;
    // Copies the record as it is now into the copy the steps compare with.
    virtual void CopyInto(Copy& copy, quint64 generation) const = 0;
};

template <class T>
class DocumentHistory::TouchedOf final : public Touched {
public:
    explicit TouchedOf(std::shared_ptr<T> record) : record_(std::move(record)) {}
    TouchedOf(std::shared_ptr<T> record, T before, T after)
        : record_(std::move(record)), values_(std::make_unique<std::pair<T, T>>(std::move(before), std::move(after)))
    {
    }
    void Undo() const override
    {
        if (values_)
            *record_ = values_->first;
    }
    void Redo() const override
    {
        if (values_)
            *record_ = values_->second;
    }
    bool Changed() const override { return values_ != nullptr; }
    void CopyInto(Copy& copy, quint64 generation) const override
    {
        auto& slot = copy[record_.get()];
        if (auto* same = dynamic_cast<RecordCopyOf<T>*>(slot.get()))
            same->value = *record_;
        else
            slot = std::make_unique<RecordCopyOf<T>>(record_, generation);
    }

private:
    std::shared_ptr<T> record_;
    std::unique_ptr<std::pair<T, T>> values_; // none when only added or taken out
};

// A record may change and then leave the document in one step: undo puts it
// back with the values it had before.
template <class T>
std::unique_ptr<DocumentHistory::Touched> DocumentHistory::RecordCopyOf<T>::TakenOut() const
{
    if (value == *record)
        return std::make_unique<TouchedOf<T>>(record);
    return std::make_unique<TouchedOf<T>>(record, value, *record);
}

// ---- a step --------------------------------------------------------------------

class DocumentHistory::ChangeStep final : public QUndoCommand {
public:
    ChangeStep(QString name, int command, Touches touched)
        : name_(std::move(name)), command_(command), touched_(std::move(touched))
    {
    }
    const QString& Name() const { return name_; }
    int Command() const { return command_; }

    // True when the document reads the same before and after the step: its
    // records were only replaced by equal ones (Auto Sync finding the
    // synchronisations the part has), or it changed nothing at all.
    bool ChangesNothing(const DocumentData& document)
    {
        if (std::none_of(touched_.begin(), touched_.end(), [](const auto& t) { return t->Changed(); }))
            return true;
        const QByteArray after = WriteDocument(document);
        undo();
        const QByteArray before = WriteDocument(document);
        for (const auto& touched : touched_)
            touched->Redo();
        return before == after;
    }

    // Copies every record the step touched as it is now.
    void CopyInto(Copy& copy, quint64 generation) const
    {
        for (const auto& touched : touched_)
            touched->CopyInto(copy, generation);
    }

    void undo() override
    {
        for (auto it = touched_.rbegin(); it != touched_.rend(); ++it)
            (*it)->Undo();
    }
    // The push runs redo once: the changes are made already.
    void redo() override
    {
        if (!done_) {
            done_ = true;
            return;
        }
        for (const auto& touched : touched_)
            touched->Redo();
    }

private:
    QString name_;
    int command_;
    Touches touched_;
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
    index_ = stack_.index();
}

// Walks the document against the copy and brings the copy up to date; with
// touched, lists the records changed, added and taken out since the copy.
void DocumentHistory::compareWithCopy(Touches* touched)
{
    ++generation_;
    ForEachRecord(document_.data, [this, touched](const auto& record) {
        using T = typename std::decay_t<decltype(record)>::element_type;
        auto& slot = copy_[record.get()];
        auto* copy = dynamic_cast<RecordCopyOf<T>*>(slot.get());
        if (!copy) { // a record new to the document
            slot = std::make_unique<RecordCopyOf<T>>(record, generation_);
            if (touched)
                touched->push_back(std::make_unique<TouchedOf<T>>(record));
            return;
        }
        copy->generation = generation_;
        if (copy->value == *record)
            return;
        if (touched)
            touched->push_back(std::make_unique<TouchedOf<T>>(record, copy->value, *record));
        copy->value = *record;
    });
    // Records taken out of the document live on in the step.
    std::erase_if(copy_, [this, touched](const auto& entry) {
        if (entry.second->generation == generation_)
            return false;
        if (touched)
            touched->push_back(entry.second->TakenOut());
        return true;
    });
}

bool DocumentHistory::Commit(const QString& name, int command, const Titler& title)
{
    if (!pending_)
        return false;
    pending_ = false;
    Touches touched;
    compareWithCopy(&touched);
    auto* step = new ChangeStep(name, command, std::move(touched));
    if (step->ChangesNothing(document_.data)) {
        delete step;
        document_.modified = !stack_.isClean();
        return false;
    }
    step->setText(title ? title(name, command) : name);
    pushing_ = true;
    stack_.push(step);
    pushing_ = false;
    index_ = stack_.index();
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
    pending_ = false;
    compareWithCopy(nullptr);
    document_.modified = true;
}

void DocumentHistory::MarkSaved()
{
    stack_.setClean();
    document_.modified = pending_;
}

// After an undo or redo the records the steps gone through touched are copied
// again: their values are now those of another step.
void DocumentHistory::afterIndexChange(int index)
{
    if (pushing_)
        return;
    for (int i = std::min(index, index_); i < std::max(index, index_); ++i)
        static_cast<const ChangeStep*>(stack_.command(i))->CopyInto(copy_, generation_);
    index_ = index;
    document_.modified = !stack_.isClean();
    emit Restored();
}

} // namespace feldra
