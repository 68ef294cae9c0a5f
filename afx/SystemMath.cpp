// Sine, cosine and the other functions of mathematics: those of the system's own C runtime, in every module of the
// project. Layer 1: afx.

// The compiler's static runtime has functions of its own, which use the x87 unit. That unit has pi to 66 bits: its
// cosine of a right angle is wrong from the fourth digit on, and from 1e20 on its sines are meaningless. The system's
// runtime (msvcrt.dll, or the universal one where the compiler is set up for it) gives the nearest double or one beside
// it.
//
// Each module links this source (cmake/NrTargets.cmake), and a module's own definition is taken before a library's: so
// code calls std::sin as usual. What the static runtime already takes from the system needs no line here: tan, asin,
// acos and atan. The other variants for float and long double are not replaced; nothing here uses them.

// The slots in the module's table of imports, by the linker's names for them. With 32 bits each name has one more
// underscore in front, which the compiler puts there.
#ifdef __i386__
#define __imp_sin _imp__sin
#define __imp_cos _imp__cos
#define __imp_atan2 _imp__atan2
#define __imp_exp _imp__exp
#define __imp_log _imp__log
#define __imp_pow _imp__pow
#define __imp_fmod _imp__fmod
#define __imp_sqrt _imp__sqrt
#endif

extern "C" {

extern double (*__imp_sin)(double);
extern double (*__imp_cos)(double);
extern double (*__imp_atan2)(double, double);
extern double (*__imp_exp)(double);
extern double (*__imp_log)(double);
extern double (*__imp_pow)(double, double);
extern double (*__imp_fmod)(double, double);
extern double (*__imp_sqrt)(double);

double sin(double x) {
    return __imp_sin(x);
}

double cos(double x) {
    return __imp_cos(x);
}

// Called by the compiler for a sine and a cosine of one angle.
void sincos(double x, double* sine, double* cosine) {
    *sine = __imp_sin(x);
    *cosine = __imp_cos(x);
}

// The static runtime has these two in one piece with its sincos, so they are here as well. Only inline functions of the
// standard library that are compiled for their addresses call them.
void sincosf(float x, float* sine, float* cosine) {
    *sine = static_cast<float>(__imp_sin(static_cast<double>(x)));
    *cosine = static_cast<float>(__imp_cos(static_cast<double>(x)));
}

long double sinl(long double x);
long double cosl(long double x);

void sincosl(long double x, long double* sine, long double* cosine) {
    *sine = sinl(x);
    *cosine = cosl(x);
}

double atan2(double y, double x) {
    return __imp_atan2(y, x);
}

double exp(double x) {
    return __imp_exp(x);
}

double log(double x) {
    return __imp_log(x);
}

double pow(double x, double y) {
    return __imp_pow(x, y);
}

double fmod(double x, double y) {
    return __imp_fmod(x, y);
}

double sqrt(double x) {
    return __imp_sqrt(x);
}
}
