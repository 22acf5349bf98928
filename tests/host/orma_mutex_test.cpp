#include "host/orma_mutex.h"

#include <gtest/gtest.h>

#include <thread>
#include <type_traits>

// If a held mutex is made anew, as in a forked child, ThreadSanitizer goes on to take it for held.
extern "C" __attribute__((visibility("default"))) const char* __tsan_default_suppressions() {
    return "mutex:orma_mutex_test.cpp\n";
}

namespace ckscribe {
namespace {

static_assert(std::has_virtual_destructor_v<OrmaMutex>);

// Returns whether another thread gets the mutex at once. The function asks the system's mutex inside, whose
// address stands behind the virtual table.
bool IsFree(OrmaMutex& mutex) {
    struct Layout {
        void* virtualTable;
        pthread_mutex_t* mutex;
    };
    pthread_mutex_t* const inside = reinterpret_cast<const Layout&>(mutex).mutex;
    pthread_t thread;
    const auto tryLock = [](void* argument) -> void* {
        auto* const tried = static_cast<pthread_mutex_t*>(argument);
        if (pthread_mutex_trylock(tried) != 0) return nullptr;
        pthread_mutex_unlock(tried);
        return argument;
    };
    EXPECT_EQ(pthread_create(&thread, nullptr, tryLock, inside), 0);
    void* result = nullptr;
    pthread_join(thread, &result);
    return result != nullptr;
}

TEST(OrmaMutex, ThreadLocksTwice_ItUnlocksTwiceBeforeAnotherGetsTheMutex) {
    OrmaMutex mutex;
    EXPECT_TRUE(mutex.IsValid());
    EXPECT_TRUE(IsFree(mutex));
    mutex.Lock();
    mutex.Lock();
    EXPECT_FALSE(IsFree(mutex));
    mutex.Unlock();
    EXPECT_FALSE(IsFree(mutex));
    mutex.Unlock();
    EXPECT_TRUE(IsFree(mutex));
}

TEST(OrmaMutex, MutexIsFree_LockIfFreeLocksOnce) {
    OrmaMutex mutex;
    EXPECT_TRUE(mutex.LockIfFree());
    EXPECT_FALSE(IsFree(mutex));
    mutex.Unlock();
    EXPECT_TRUE(IsFree(mutex));
}

TEST(OrmaMutex, ThisThreadHoldsTheMutex_LockIfFreeLeavesItAsItIs) {
    OrmaMutex mutex;
    mutex.Lock();
    EXPECT_FALSE(mutex.LockIfFree());
    EXPECT_FALSE(IsFree(mutex));
    mutex.Unlock();
    EXPECT_TRUE(IsFree(mutex));
}

TEST(OrmaMutex, AnotherThreadHoldsTheMutex_LockIfFreeReturnsFalseAtOnce) {
    OrmaMutex mutex;
    mutex.Lock();
    bool isLocked = true;
    std::thread([&] { isLocked = mutex.LockIfFree(); }).join();
    EXPECT_FALSE(isLocked);
    mutex.Unlock();
}

TEST(OrmaMutex, MutexIsNotValid_LockAndUnlockDoNothing) {
    OrmaMutex mutex;
    mutex.__fini();
    EXPECT_FALSE(mutex.IsValid());
    EXPECT_FALSE(mutex.LockIfFree());
    mutex.Lock();
    mutex.Unlock();
    mutex.Unlock();
    mutex.__fini();
    EXPECT_FALSE(mutex.IsValid());
}

TEST(OrmaMutex, LockedMutexIsMadeAnew_ItIsFree) {
    OrmaMutex mutex;
    mutex.__fini();
    EXPECT_EQ(mutex.__init(), 0);
    EXPECT_TRUE(mutex.IsValid());
    mutex.Lock();
    mutex.Lock();
    EXPECT_FALSE(IsFree(mutex));
    EXPECT_EQ(mutex.__init(), 0);  // whatever its state was
    EXPECT_TRUE(IsFree(mutex));
    mutex.Lock();
    EXPECT_FALSE(IsFree(mutex));
    mutex.Unlock();
    EXPECT_TRUE(IsFree(mutex));
}

TEST(OrmaMutex, Copy_IsAMutexOfItsOwn) {
    OrmaMutex source;
    source.Lock();
    OrmaMutex copy(source);
    EXPECT_TRUE(IsFree(copy));
    copy.Lock();
    source.Unlock();
    EXPECT_TRUE(IsFree(source));
    EXPECT_FALSE(IsFree(copy));
    copy.Unlock();

    source.__fini();
    const OrmaMutex copyOfInvalid(source);
    EXPECT_TRUE(copyOfInvalid.IsValid());
}

TEST(OrmaMutex, Assignment_ChangesNeitherMutex) {
    OrmaMutex held;
    OrmaMutex free;
    held.Lock();
    EXPECT_EQ(&(free = held), &free);
    EXPECT_TRUE(IsFree(free));
    EXPECT_FALSE(IsFree(held));
    held = free;
    EXPECT_FALSE(IsFree(held));
    held.Unlock();
    EXPECT_TRUE(IsFree(held));

    OrmaMutex invalid;
    invalid.__fini();
    invalid = free;
    EXPECT_FALSE(invalid.IsValid());
    free = invalid;
    EXPECT_TRUE(free.IsValid());
}

TEST(OrmaMutex, SeveralThreadsLock_OneAtATimeHoldsTheMutex) {
    struct Shared {
        OrmaMutex mutex;
        long count = 0;
    } shared;
    const auto countUp = [](void* argument) -> void* {
        Shared& theirs = *static_cast<Shared*>(argument);
        for (int i = 0; i < 20000; ++i) {
            const OrmaLock lock(theirs.mutex);
            const OrmaLock again(theirs.mutex);
            ++theirs.count;
        }
        return nullptr;
    };
    pthread_t threads[4];
    for (pthread_t& thread : threads) ASSERT_EQ(pthread_create(&thread, nullptr, countUp, &shared), 0);
    for (const pthread_t thread : threads) pthread_join(thread, nullptr);
    EXPECT_EQ(shared.count, 80000);
}

TEST(OrmaLock, LockLives_MutexIsHeld) {
    OrmaMutex mutex;
    {
        const OrmaLock lock(mutex);
        EXPECT_FALSE(IsFree(mutex));
    }
    EXPECT_TRUE(IsFree(mutex));
}

}  // namespace
}  // namespace ckscribe
