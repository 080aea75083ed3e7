/* device/include/c/math.h: floating point. */
#ifndef WISPEN_DEVICE_MATH_H_
#define WISPEN_DEVICE_MATH_H_

#ifdef __cplusplus
extern "C" {
#endif

typedef float float_t;
typedef double double_t;

#define HUGE_VAL __builtin_huge_val()
#define HUGE_VALF __builtin_huge_valf()
#define HUGE_VALL __builtin_huge_vall()
#define INFINITY __builtin_inff()
#define NAN __builtin_nanf("")
#define FP_NAN 1
#define FP_INFINITE 2
#define FP_ZERO 3
#define FP_NORMAL 4
#define FP_SUBNORMAL 5
#define fpclassify(value) __builtin_fpclassify(FP_NAN, FP_INFINITE, FP_NORMAL, FP_SUBNORMAL, FP_ZERO, value)
#define isfinite(value) __builtin_isfinite(value)
#define isinf(value) __builtin_isinf(value)
#define isnan(value) __builtin_isnan(value)
#define isnormal(value) __builtin_isnormal(value)
#define signbit(value) __builtin_signbit(value)
#define isgreater(a, b) __builtin_isgreater(a, b)
#define isgreaterequal(a, b) __builtin_isgreaterequal(a, b)
#define isless(a, b) __builtin_isless(a, b)
#define islessequal(a, b) __builtin_islessequal(a, b)
#define islessgreater(a, b) __builtin_islessgreater(a, b)
#define isunordered(a, b) __builtin_isunordered(a, b)

double acos(double value);
float acosf(float value);
long double acosl(long double value);
double acosh(double value);
float acoshf(float value);
long double acoshl(long double value);
double asin(double value);
float asinf(float value);
long double asinl(long double value);
double asinh(double value);
float asinhf(float value);
long double asinhl(long double value);
double atan(double value);
float atanf(float value);
long double atanl(long double value);
double atanh(double value);
float atanhf(float value);
long double atanhl(long double value);
double cbrt(double value);
float cbrtf(float value);
long double cbrtl(long double value);
double ceil(double value);
float ceilf(float value);
long double ceill(long double value);
double cos(double value);
float cosf(float value);
long double cosl(long double value);
double cosh(double value);
float coshf(float value);
long double coshl(long double value);
double erf(double value);
float erff(float value);
long double erfl(long double value);
double erfc(double value);
float erfcf(float value);
long double erfcl(long double value);
double exp(double value);
float expf(float value);
long double expl(long double value);
double exp2(double value);
float exp2f(float value);
long double exp2l(long double value);
double expm1(double value);
float expm1f(float value);
long double expm1l(long double value);
double fabs(double value);
float fabsf(float value);
long double fabsl(long double value);
double floor(double value);
float floorf(float value);
long double floorl(long double value);
double lgamma(double value);
float lgammaf(float value);
long double lgammal(long double value);
double log(double value);
float logf(float value);
long double logl(long double value);
double log10(double value);
float log10f(float value);
long double log10l(long double value);
double log1p(double value);
float log1pf(float value);
long double log1pl(long double value);
double log2(double value);
float log2f(float value);
long double log2l(long double value);
double logb(double value);
float logbf(float value);
long double logbl(long double value);
double nearbyint(double value);
float nearbyintf(float value);
long double nearbyintl(long double value);
double rint(double value);
float rintf(float value);
long double rintl(long double value);
double round(double value);
float roundf(float value);
long double roundl(long double value);
double sin(double value);
float sinf(float value);
long double sinl(long double value);
double sinh(double value);
float sinhf(float value);
long double sinhl(long double value);
double sqrt(double value);
float sqrtf(float value);
long double sqrtl(long double value);
double tan(double value);
float tanf(float value);
long double tanl(long double value);
double tanh(double value);
float tanhf(float value);
long double tanhl(long double value);
double tgamma(double value);
float tgammaf(float value);
long double tgammal(long double value);
double trunc(double value);
float truncf(float value);
long double truncl(long double value);
double atan2(double a, double b);
float atan2f(float a, float b);
long double atan2l(long double a, long double b);
double copysign(double a, double b);
float copysignf(float a, float b);
long double copysignl(long double a, long double b);
double fdim(double a, double b);
float fdimf(float a, float b);
long double fdiml(long double a, long double b);
double fmax(double a, double b);
float fmaxf(float a, float b);
long double fmaxl(long double a, long double b);
double fmin(double a, double b);
float fminf(float a, float b);
long double fminl(long double a, long double b);
double fmod(double a, double b);
float fmodf(float a, float b);
long double fmodl(long double a, long double b);
double hypot(double a, double b);
float hypotf(float a, float b);
long double hypotl(long double a, long double b);
double nextafter(double a, double b);
float nextafterf(float a, float b);
long double nextafterl(long double a, long double b);
double pow(double a, double b);
float powf(float a, float b);
long double powl(long double a, long double b);
double remainder(double a, double b);
float remainderf(float a, float b);
long double remainderl(long double a, long double b);
double fma(double a, double b, double c);
float fmaf(float a, float b, float c);
long double fmal(long double a, long double b, long double c);
double frexp(double value, int* exponent);
float frexpf(float value, int* exponent);
long double frexpl(long double value, int* exponent);
double ldexp(double value, int exponent);
float ldexpf(float value, int exponent);
long double ldexpl(long double value, int exponent);
double modf(double value, double* whole);
float modff(float value, float* whole);
long double modfl(long double value, long double* whole);
double scalbn(double value, int exponent);
float scalbnf(float value, int exponent);
long double scalbnl(long double value, int exponent);
double scalbln(double value, long exponent);
float scalblnf(float value, long exponent);
long double scalblnl(long double value, long exponent);
int ilogb(double value);
int ilogbf(float value);
int ilogbl(long double value);
long long llrint(double value);
long long llrintf(float value);
long long llrintl(long double value);
long long llround(double value);
long long llroundf(float value);
long long llroundl(long double value);
long lrint(double value);
long lrintf(float value);
long lrintl(long double value);
long lround(double value);
long lroundf(float value);
long lroundl(long double value);
double nexttoward(double value, long double towards);
float nexttowardf(float value, long double towards);
long double nexttowardl(long double value, long double towards);
double remquo(double a, double b, int* quotient);
float remquof(float a, float b, int* quotient);
long double remquol(long double a, long double b, int* quotient);

#ifdef __cplusplus
}
#endif

#endif
