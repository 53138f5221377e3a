#pragma once

#include "foundation/core/Registered.h"

#include <atomic>
#include <functional>
#include <string>
#include <utility>

namespace testing_support {

/// An object that knows how many of its kind are alive and what was done to it, letter by letter:
/// '+' retained, '-' released, 'x' destroyed.
class ACounted : public VFoundation::Registered<ACounted, VFoundation::VObject> {
  public:
    static constexpr char const* kClassName = "ACounted"; // sorts before every class of the library
    static inline VFoundation::VClass* ms_theClass = nullptr;

    explicit ACounted(VFoundation::VClass* cls = nullptr) : Registered(cls) { ++ms_alive; }
    ~ACounted() override {
        --ms_alive;
        if (m_log) {
            *m_log += 'x';
        }
    }
    static ACounted* New() { return new ACounted; }

    void Retain() const override {
        Note('+');
        VObject::Retain();
    }
    void Release() const override {
        Note('-');
        VObject::Release();
    }

    void LogTo(std::string* log) { m_log = log; }
    using VObject::CountWord;

    static inline std::atomic<int> ms_alive{0};

  private:
    void Note(char what) const {
        if (m_log) {
            *m_log += what;
        }
    }
    std::string* m_log = nullptr;
};

/// A `Base` whose destructor does what the test says, whose death throws if it says so, and which cannot be copied.
template <class Base>
struct ALast : Base {
    explicit ALast(std::function<void()> act, bool throws = false)
        : m_act(std::move(act)), m_throws(throws) {}
    ~ALast() override { m_act(); }
    decltype(std::declval<Base const&>().Copy()) Copy() const override { throw 1; }
    void DeleteInstance() const override {
        bool const throws = m_throws;
        Base::DeleteInstance();
        if (throws) {
            throw 1;
        }
    }
    std::function<void()> m_act;
    bool m_throws;
};

} // namespace testing_support
