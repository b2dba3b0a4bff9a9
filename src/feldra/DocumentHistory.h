#pragma once

#include <QObject>
#include <QString>
#include <QUndoStack>
#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

namespace feldra {

struct DocumentState;

// The undo history of an open document: a stack of steps, each the records a
// command changed with their values before and after it.
//
// The history keeps a copy of every record's own fields as they were at the
// end of the last step (the records a record holds are kept as handles, and
// Qt's texts, lists and JSON objects are shared until changed, so the copy
// costs little more than the records' handles). A step compares the document
// with that copy and keeps only the records that differ; undo puts their
// former values back into the same records, so that whatever refers to a
// record still refers to it, and lists get back their former members in
// their former order. A step also names the records it added to the document
// or took out of it, so that after an undo or redo only the records the steps
// gone through touched are copied again.
class DocumentHistory : public QObject {
    Q_OBJECT
public:
    // The title of a step in the user's language, from the name the host gave
    // it and, for an add-in command, the command's key (0 for none).
    using Titler = std::function<QString(const QString& name, int command)>;

    explicit DocumentHistory(DocumentState& document);
    ~DocumentHistory() override;
    DocumentHistory(const DocumentHistory&) = delete;
    DocumentHistory& operator=(const DocumentHistory&) = delete;

    // Takes the copy the steps compare with, unless taken: done when the host
    // opens the document, so that its first change costs no more than others.
    void Start();
    // Called before the document's data changes: marks the document modified
    // and remembers that a step may be due. The first change of a document
    // takes the copy the steps compare with.
    void BeforeChange();
    // Whether the document may have changed since the last step.
    bool HasPendingChanges() const { return pending_; }
    // The changes since the last step as one step; false when nothing changed,
    // and then the document is modified only if the history is not at the
    // state last saved.
    bool Commit(const QString& name, int command, const Titler& title);
    // Gives every step its title again (after a change of language).
    void Retitle(const Titler& title);
    // Takes changes made since the last step (by the add-ins answering an undo)
    // as part of the current state, without a step of their own: the document
    // is then modified.
    void Adopt();
    // The document was saved: the current step is the saved state.
    void MarkSaved();

    QUndoStack& Stack() { return stack_; }
    const QUndoStack& Stack() const { return stack_; }

signals:
    // An undo or redo has put the document into another state.
    void Restored();

private:
    struct RecordCopy;
    template <class T>
    struct RecordCopyOf;
    class Touched;
    template <class T>
    class TouchedOf;
    class ChangeStep;
    using Copy = std::unordered_map<const void*, std::unique_ptr<RecordCopy>>;
    using Touches = std::vector<std::unique_ptr<Touched>>;

    void takeCopy();
    void compareWithCopy(Touches* touched);
    void afterIndexChange(int index);

    DocumentState& document_;
    QUndoStack stack_;
    Copy copy_;
    bool copied_ = false;
    bool pending_ = false;
    bool pushing_ = false;
    int index_ = 0; // the stack's index the copy is of
    quint64 generation_ = 0;
};

} // namespace feldra
