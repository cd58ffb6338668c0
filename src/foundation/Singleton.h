#pragma once

namespace Dorvan {

// Base of a class with one instance, made on the first call of getSingleton() and
// destroyed at process exit.
template <class T>
class Singleton {
public:
    static T& getSingleton() {
        static T mInstance;
        return mInstance;
    }

    Singleton(const Singleton&) = delete;
    Singleton& operator=(const Singleton&) = delete;

protected:
    Singleton() {}
    virtual ~Singleton() {}
};

}  // namespace Dorvan
