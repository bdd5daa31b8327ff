#ifndef UT_SHAREDPTR_H
#define UT_SHAREDPTR_H

#include <type_traits>
#include <utility>

/*! Base of objects that count their references. Counting is not atomic. */
class UT_ShareBase {
public:
    UT_ShareBase() = default;
    /*! A copy starts unshared. */
    UT_ShareBase(UT_ShareBase const &) { }
    /*! Assignment leaves both counts as they are. */
    UT_ShareBase &operator=(UT_ShareBase const &) { return *this; }
    virtual ~UT_ShareBase() = default;

    /*! Number of UT_SharedPtr that refer to this object. */
    [[nodiscard]] int refCount() const { return m_refCount; }

private:
    template <class T> friend class UT_SharedPtr;

    int m_refCount = 0;
};

/*! Counted reference to a \a T derived from UT_ShareBase; the last one to go deletes the object. */
template <class T> class UT_SharedPtr {
public:
    /*! Refers to nothing. */
    UT_SharedPtr() = default;
    /*! Shares \a object, which was made by new, or nothing. */
    UT_SharedPtr(T *object)
        : m_object(object)
    {
        if (m_object)
            ++m_object->m_refCount;
    }
    /*! Shares the same object. */
    UT_SharedPtr(UT_SharedPtr const &other)
        : UT_SharedPtr(other.m_object)
    {
    }
    /*! Shares the object of a pointer to a derived class. */
    template <class Derived, class = std::enable_if_t<std::is_convertible_v<Derived *, T *>>>
    UT_SharedPtr(UT_SharedPtr<Derived> const &other)
        : UT_SharedPtr(other.get())
    {
    }
    /*! Takes the reference over; \a other refers to nothing then. */
    UT_SharedPtr(UT_SharedPtr &&other) noexcept
        : m_object(std::exchange(other.m_object, nullptr))
    {
    }
    /*! Deletes the object when this was the last reference. */
    ~UT_SharedPtr()
    {
        if (m_object && --m_object->m_refCount == 0)
            delete m_object;
    }
    /*! Shares the object of \a other in place of its own. */
    UT_SharedPtr &operator=(UT_SharedPtr other) noexcept
    {
        std::swap(m_object, other.m_object);
        return *this;
    }

    /*! \name Access
        The object is null for a reference to nothing. */
    /*!\{*/
    [[nodiscard]] T *get() const { return m_object; } /*!< The object or null. */
    T *operator->() const { return m_object; } /*!< Not for null. */
    T &operator*() const { return *m_object; } /*!< Not for null. */
    [[nodiscard]] bool isNull() const { return !m_object; } /*!< Whether it refers to nothing. */
    explicit operator bool() const { return m_object; } /*!< Whether it refers to an object. */
    /*!\}*/

    /*! \name Comparison
        Whether both are the same object, or none. A plain pointer is only looked at, never shared. */
    /*!\{*/
    /*! Whether two references are equal. */
    friend bool operator==(UT_SharedPtr const &a, UT_SharedPtr const &b) { return a.m_object == b.m_object; }
    friend bool operator==(UT_SharedPtr const &a, T const *b) { return a.m_object == b; } /*!< The same. */
    friend bool operator==(T const *a, UT_SharedPtr const &b) { return a == b.m_object; } /*!< The same. */
    /*! Whether two references differ. */
    friend bool operator!=(UT_SharedPtr const &a, UT_SharedPtr const &b) { return a.m_object != b.m_object; }
    friend bool operator!=(UT_SharedPtr const &a, T const *b) { return a.m_object != b; } /*!< The same. */
    friend bool operator!=(T const *a, UT_SharedPtr const &b) { return a != b.m_object; } /*!< The same. */
    /*!\}*/

private:
    T *m_object = nullptr;
};

#endif
