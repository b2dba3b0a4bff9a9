#pragma once

#include "feldra/HostContext.h"

#include <QList>
#include <QString>
#include <algorithm>
#include <memory>

namespace feldra {

// The base of every Feldra facade object: a thin view over the host's data.
// Each facade method first passes guard() with its operation's name, so that
// the fault injector can make exactly that operation fail.
class View {
public:
    View(std::shared_ptr<HostContext> context, std::shared_ptr<DocumentState> document)
        : ctx_(std::move(context)), doc_(std::move(document))
    {
    }
    virtual ~View() = default;

    const std::shared_ptr<DocumentState>& Document() const { return doc_; }

protected:
    void guard(const QString& operation) const { ctx_->faults.Check(operation); }
    // Passes the guard of an operation that changes the document, and marks the
    // document modified: whatever an add-in writes is a change to save. Called
    // before the change, so that the undo history sees the document as it was.
    void change(const QString& operation) const
    {
        guard(operation);
        touch();
    }
    void touch() const
    {
        if (doc_)
            doc_->history.BeforeChange();
    }

    template <class T>
    T get(const QString& operation, const T& field) const
    {
        guard(operation);
        return field;
    }

    template <class T, class V>
    void put(const QString& operation, T& field, const V& value) const
    {
        guard(operation + QStringLiteral(" write"));
        store(field, value);
    }
    // Stores a value that passed its operation's guard and checks: writing
    // the value a field has already changes nothing, not even the marker.
    template <class T, class V>
    void store(T& field, const V& value) const
    {
        if (field == value)
            return;
        touch();
        field = value;
    }

    [[noreturn]] static void fail(const QString& operation, const QString& description);

    // The element at a position counted from 1.
    template <class T>
    static const T& at(const QList<T>& list, int position, const QString& operation)
    {
        if (position < 1 || position > list.size())
            fail(operation, QStringLiteral("Position %1 is not between 1 and %2.")
                                .arg(position)
                                .arg(list.size()));
        return list[position - 1];
    }

    // The first record of a list of shared records that matches, or none.
    template <class List, class Pred>
    static auto find(const List& list, Pred pred) -> typename List::value_type
    {
        auto it = std::find_if(list.cbegin(), list.cend(), pred);
        return it == list.cend() ? nullptr : *it;
    }

    // The Feldra view behind a facade object handed to this one; it must come
    // from this host and, for document objects, from the same document.
    template <class V, class I>
    V& own(const std::shared_ptr<I>& object, const QString& operation) const
    {
        auto* view = dynamic_cast<V*>(object.get());
        if (!view)
            fail(operation, QStringLiteral("The object is missing or not one of this host's."));
        if (view->Document() && doc_ && view->Document() != doc_)
            fail(operation, QStringLiteral("The object belongs to another document."));
        return *view;
    }

    HostContext& ctx() const { return *ctx_; }
    DocumentState& doc() const { return *doc_; }

    std::shared_ptr<HostContext> ctx_;
    std::shared_ptr<DocumentState> doc_;
};

} // namespace feldra
