#include "MusterVorlagen.h"

#include <stdexcept>

namespace orvostat {

namespace {

using enum EBezug;
using enum EWann;

// ---- statutory patients

constexpr SPosten KONTROLLE[] = {
    {'k', "01", 100},  {'k', "04", 22}, {'k', "107", 58},       {'k', "ä925a", 18, Zahn},
    {'k', "ä935d", 5}, {'k', "105", 9}, {'k', "8", 24, Einige}, {'k', "10", 8, Einige},
    {'q', "s0010", 2}, {'k', "03", 2}};
constexpr SPosten FUELLUNG[] = {{'k', "8", 62, Zahn},
                                {'k', "ä925a", 12, Zahn},
                                {'k', "40|40|41a|41a", 66, Zahn},
                                {'k', "12", 55, Zahn},
                                {'k', "25", 16, Zahn},
                                {'k', "26", 3, Zahn},
                                {'k', "13a|13b|13c|13d", 100, Zahn},
                                {'k', "13a|13b|13b|13c", 22, Anderer},
                                {'q', "2060|2080|2100|2120", 100, Zahn, Mehrkosten},
                                {'q', "2197", 90, Zahn, Mehrkosten},
                                {'q', "m2197", 30, Zahn, Mehrkosten}};
constexpr SPosten SCHMERZ[] = {{'k', "ä1", 100},       {'k', "8", 75, Zahn},  {'k', "ä925a", 55, Zahn},
                               {'k', "105", 34},       {'k', "11", 16, Zahn}, {'k', "38", 9, Zahn},
                               {'k', "ä161", 4, Zahn}, {'k', "602", 2}};
constexpr SPosten EXTRAKTION[] = {{'k', "ä925a", 35, Zahn},
                                  {'k', "40|41a|41a|41a", 95, Zahn},
                                  {'k', "43|44|45|47a", 100, Zahn},
                                  {'k', "58", 6, Zahn},
                                  {'k', "43|43|44|44", 12, Anderer}};
constexpr SPosten NACHSORGE[] = {{'k', "38", 100, Zahn}, {'k', "105", 30}, {'k', "ä1", 20}};
constexpr SPosten OPERATION[] = {{'k', "ä935d", 55},
                                 {'k', "41a", 100},
                                 {'k', "47a|47a|48|63", 100, Zahn},
                                 {'k', "47a|48|48|48", 35, Anderer},
                                 {'k', "602", 8}};
constexpr SPosten REINIGUNG[] = {
    {'q', "1040", 100, Gebiss}, {'q', "1020", 34}, {'q', "1000", 10}, {'q', "v0100", 3}};
constexpr SPosten PROPHYLAXE[] = {
    {'k', "ip1", 92}, {'k', "ip2", 90}, {'k', "ip4", 82}, {'k', "ip5", 28, Einige}, {'k', "107", 6}};
constexpr SPosten WIEDERHERSTELLUNG[] = {
    {'k', "24a", 60, Zahn}, {'k', "24b", 10, Zahn}, {'k', "89", 12}, {'7', "7010", 14}};
constexpr SPosten KASSENGEBUEHR[] = {
    {'k', "01", 100}, {'k', "kkgeb|kkgeb|kkgeb|kkent", 100}, {'q', "9262", 40}};

constexpr SVorlage KASSE[] = {
    {'a', 36, 32, KONTROLLE}, {'a', 25, 24, FUELLUNG},         {'a', 12, 78, SCHMERZ},
    {'a', 7, 55, EXTRAKTION}, {'a', 5, 40, NACHSORGE},         {'a', 2, 70, OPERATION},
    {'a', 12, 12, REINIGUNG}, {'b', 1, 30, WIEDERHERSTELLUNG}, {'a', 1, 5, KASSENGEBUEHR}};
constexpr SVorlage KIND[] = {{'a', 34, 30, KONTROLLE},
                             {'a', 30, 10, PROPHYLAXE},
                             {'a', 20, 30, FUELLUNG},
                             {'a', 10, 80, SCHMERZ},
                             {'a', 6, 50, EXTRAKTION}};

// ---- private patients

constexpr SPosten P_KONTROLLE[] = {{'q', "0010", 100}, {'q', "4005", 45},       {'q', "4050", 55, Gebiss},
                                   {'p', "5", 12},     {'p', "5000", 22, Zahn}, {'q', "0070", 30, Einige}};
constexpr SPosten P_FUELLUNG[] = {{'q', "0070", 50, Zahn},
                                  {'q', "0080", 18, Zahn},
                                  {'q', "0090|0090|0100|0100", 70, Zahn},
                                  {'q', "2060|2080|2100|2120", 100, Zahn},
                                  {'q', "2060|2080|2080|2100", 25, Anderer},
                                  {'q', "2197", 92, Zahn},
                                  {'q', "m2197", 30, Zahn}};
constexpr SPosten P_SCHMERZ[] = {{'p', "1", 100},         {'q', "0070", 70, Zahn}, {'p', "5000", 60, Zahn},
                                 {'q', "2390", 14, Zahn}, {'q', "2020", 20, Zahn}, {'a', "a100", 12},
                                 {'p', "60", 4}};
constexpr SPosten P_EXTRAKTION[] = {{'q', "0100", 90, Zahn},
                                    {'q', "3000|3010|3020|3030", 100, Zahn},
                                    {'p', "5000", 40, Zahn},
                                    {'a', "a100", 20}};
constexpr SPosten P_REINIGUNG[] = {{'q', "1040", 100, Gebiss}, {'q', "1020", 50}, {'q', "1000", 30}};
constexpr SPosten P_ENDO[] = {{'q', "0090", 90, Zahn},
                              {'q', "2390", 50, Zahn},
                              {'q', "2410", 100, Kanal},
                              {'q', "2440", 60, Kanal},
                              {'p', "5000", 80, Zahn}};
constexpr SPosten P_SCHIENE[] = {{'q', "8000", 70}, {'q', "7010", 100}, {'7', "7020", 100}};
constexpr SVorlage PRIVAT[] = {{'a', 38, 30, P_KONTROLLE}, {'a', 24, 22, P_FUELLUNG},
                               {'a', 10, 75, P_SCHMERZ},   {'a', 6, 50, P_EXTRAKTION},
                               {'a', 16, 10, P_REINIGUNG}, {'a', 4, 30, P_ENDO},
                               {'d', 2, 30, P_SCHIENE}};

// ---- home visits: travel money is shared by the patients of a tour

constexpr SPosten HEIMBESUCH[] = {{'g', "152a", 100},  {'g', "01", 80}, {'g', "7810|7811|7820|7928", 100},
                                  {'g', "107", 70},    {'g', "ä1", 25}, {'g', "105", 30},
                                  {'g', "43", 6, Zahn}};
constexpr SVorlage HEIM[] = {{'a', 1, 60, HEIMBESUCH}};

// ---- other payers

constexpr SPosten SONST_E[] = {{'e', "e01", 100}, {'e', "e13", 60, Zahn}, {'b', "1", 8}};
constexpr SPosten SONST_F[] = {{'f', "f01", 100}, {'f', "f43", 30, Zahn}};
constexpr SPosten SONST_H[] = {{'h', "h01", 100}, {'h', "h97", 6}};
constexpr SPosten SONST_U[] = {{'u', "u100", 100}, {'u', "u200", 40, Zahn}, {'p', "5004", 30}};
constexpr SVorlage E[] = {{'g', 1, 30, SONST_E}};
constexpr SVorlage F[] = {{'t', 1, 30, SONST_F}};
constexpr SVorlage H[] = {{'g', 1, 30, SONST_H}};
constexpr SVorlage U[] = {{'7', 3, 30, SONST_U}, {'8', 1, 30, SONST_U}};

// ---- over several visits

constexpr SPosten ENDO_1[] = {{'k', "ä1", 60},
                              {'k', "8", 90, Zahn},
                              {'k', "ä925a", 80, Zahn},
                              {'k', "41a", 80, Zahn},
                              {'k', "28|28|28|31", 100, Kanal},
                              {'k', "32", 80, Kanal},
                              {'k', "34", 90, Zahn}};
constexpr SPosten ENDO_2[] = {{'k', "34", 100, Zahn}, {'k', "ä925a", 50, Zahn}, {'k', "12", 30, Zahn}};
constexpr SPosten ENDO_3[] = {
    {'k', "35", 100, Kanal}, {'k', "ä925a", 90, Zahn}, {'k', "12", 60, Zahn}, {'k', "13b", 70, Zahn}};
constexpr SAbschnitt ENDO[] = {{0, 0, false, {'a', 1, 60, ENDO_1}},
                               {6, 15, false, {'a', 1, 30, ENDO_2}},
                               {8, 25, false, {'a', 1, 20, ENDO_3}}};

constexpr SPosten ZE_PLAN[] = {{'q', "0030", 6}, {'k', "ä925a", 50, Zahn}, {'k', "8", 60, Einige}};
constexpr SPosten ZE_PRAEP[] = {{'k', "41a", 80, Zahn},
                                {'k', "20a|20b|91b|91d", 100, Zahn},
                                {'k', "20b|20c|91b|92", 45, Anderer},
                                {'k', "89", 18},
                                {'k', "24c", 55, Zahn},
                                {'q', "2210", 22, Zahn},
                                {'k', "603", 60}};
constexpr SPosten ZE_EIN[] = {{'k', "24c", 60, Zahn},
                              {'k', "89", 15},
                              {'k', "98f", 10},
                              {'1', "0010", 100, Mund, Labor},
                              {'1', "0120", 90, Mund, Labor},
                              {'1', "1021|1021|1100|1100", 100, Einige, Labor},
                              {'1', "1500", 55, Einige, Labor},
                              {'3', "5050", 25, Zahn, Labor},
                              {'4', "9100", 80, Mund, Labor},
                              {'2', "2010", 8, Mund, Labor},
                              {'2', "3021", 6, Einige, Labor},
                              {'5', "9500", 10, Mund, Labor},
                              {'6', "9600", 3, Mund, Labor},
                              {'9', "9900", 12, Einige, Labor}};
constexpr SAbschnitt ZE_KASSE[] = {{0, 0, false, {'a', 1, 90, ZE_PLAN}},
                                   {12, 40, false, {'b', 1, 30, ZE_PRAEP}},
                                   {8, 18, true, {'b', 1, 40, ZE_EIN}}};
constexpr SPosten ZEP_PLAN[] = {{'q', "0030", 100}, {'p', "5004", 50}};
constexpr SPosten ZEP_PRAEP[] = {{'q', "0100", 90, Zahn},
                                 {'q', "2200|2210|5010|5040", 100, Zahn},
                                 {'q', "2220|2210|5010|5070", 45, Anderer},
                                 {'q', "2197", 50, Zahn}};
constexpr SPosten ZEP_EIN[] = {{'q', "0070", 30, Zahn},
                               {'3', "5050", 100, Einige, Labor},
                               {'1', "0010", 100, Mund, Labor},
                               {'4', "9100", 40, Mund, Labor}};
constexpr SAbschnitt ZE_PRIVAT[] = {{0, 0, false, {'b', 1, 80, ZEP_PLAN}},
                                    {8, 30, false, {'b', 1, 30, ZEP_PRAEP}},
                                    {8, 18, true, {'b', 1, 40, ZEP_EIN}}};

constexpr SPosten PAR_STATUS[] = {{'k', "4", 100}, {'k', "atg", 98}, {'k', "mhu", 96}, {'k', "p200", 4}};
constexpr SPosten PAR_AIT[] = {
    {'k', "aita", 100, Einige}, {'k', "aitb", 90, Einige}, {'k', "40", 40},
    {'k', "41a", 80},           {'k', "108", 15},          {'q', "4070", 4, Einige}};
constexpr SPosten PAR_BEVA[] = {{'k', "beva", 100}, {'k', "111", 40}};
constexpr SAbschnitt PAR[] = {{0, 0, false, {'e', 1, 60, PAR_STATUS}},
                              {15, 35, false, {'e', 1, 20, PAR_AIT}},
                              {3, 10, false, {'e', 1, 20, PAR_AIT}},
                              {60, 90, false, {'e', 1, 30, PAR_BEVA}}};
constexpr SPosten PAR_CHIR[] = {
    {'k', "41a", 100}, {'k', "csta", 100, Einige}, {'k', "cstb", 60, Einige}, {'k', "p201", 5}};
constexpr SPosten PAR_BEVB[] = {{'k', "bevb", 100}};
constexpr SAbschnitt PAR_CHIRURGIE[] = {{15, 40, false, {'e', 1, 40, PAR_CHIR}},
                                        {60, 90, false, {'e', 1, 20, PAR_BEVB}}};
constexpr SPosten UPT_SITZUNG[] = {{'k', "upta", 98}, {'k', "uptb", 70},         {'k', "uptc", 95, Gebiss},
                                   {'k', "uptd", 60}, {'k', "upte", 50, Einige}, {'k', "uptf", 45, Einige},
                                   {'k', "uptg", 25}};
constexpr SAbschnitt UPT[] = {{60, 120, false, {'e', 1, 15, UPT_SITZUNG}},
                              {80, 130, false, {'e', 1, 15, UPT_SITZUNG}},
                              {80, 130, false, {'e', 1, 15, UPT_SITZUNG}}};
constexpr SPosten P_PAR[] = {{'q', "4000", 100}, {'q', "4070", 100, Einige}, {'q', "4075", 80, Einige}};
constexpr SAbschnitt PAR_PRIVAT[] = {{0, 0, false, {'e', 1, 40, P_PAR}},
                                     {10, 25, false, {'e', 1, 20, P_PAR}}};

constexpr SPosten KFO_BEGINN[] = {{'k', "01k", 100},  {'k', "117", 100},  {'k', "116", 90}, {'k', "118", 80},
                                  {'k', "ä934a", 80}, {'k', "ä935d", 90}, {'k', "ä928", 6}};
constexpr SPosten KFO_EINGLIEDERUNG[] = {{'k', "119a|119b|119c|119d", 100},
                                         {'k', "120a|120a|120b|120b", 80},
                                         {'k', "126a", 90, Gebiss},
                                         {'k', "126b", 60, Einige},
                                         {'k', "128a", 90},
                                         {'7', "7010", 30}};
constexpr SAbschnitt KFO[] = {{0, 0, false, {'c', 1, 60, KFO_BEGINN}},
                              {20, 50, false, {'c', 1, 30, KFO_EINGLIEDERUNG}}};
constexpr SPosten P_KFO[] = {{'q', "0030", 60}, {'q', "8000", 30}, {'p', "5004", 40}, {'7', "7010", 80}};
constexpr SAbschnitt KFO_PRIVAT[] = {{0, 0, false, {'c', 1, 60, P_KFO}},
                                     {20, 50, false, {'c', 1, 30, P_KFO}}};
constexpr SPosten KONTROLLE_KFO[] = {
    {'k', "122a", 92}, {'k', "119b", 30}, {'k', "120a", 16}, {'k', "128a", 14}, {'k', "12", 3}};

constexpr SPosten KBR_1[] = {
    {'k', "ä1", 90}, {'k', "ä935d", 40}, {'k', "k1|k1|k2|k2", 100}, {'7', "7020", 90}};
constexpr SPosten KBR_2[] = {{'k', "k4|up3|up3|k3", 100}, {'k', "ä1", 20}};
constexpr SAbschnitt KBR[] = {{0, 0, false, {'d', 1, 60, KBR_1}}, {8, 20, false, {'d', 1, 20, KBR_2}}};

constexpr SPosten IMPL_1[] = {{'q', "9000", 100}, {'p', "5004", 90}};
constexpr SPosten IMPL_2[] = {{'q', "0100", 100, Zahn},
                              {'q', "9010", 100, Zahn},
                              {'q', "9100", 25, Zahn},
                              {'q', "m9010", 100, Zahn},
                              {'a', "a100", 80}};
constexpr SAbschnitt IMPLANTAT[] = {{0, 0, false, {'a', 1, 80, IMPL_1}},
                                    {15, 60, false, {'a', 1, 60, IMPL_2}}};

} // namespace

const std::span<const SVorlage> VORLAGEN_KASSE = KASSE;
const std::span<const SVorlage> VORLAGEN_KIND = KIND;
const std::span<const SVorlage> VORLAGEN_PRIVAT = PRIVAT;
const std::span<const SVorlage> VORLAGEN_HEIM = HEIM;

std::span<const SVorlage> VorlagenSonstige(char cGoArt) {
    switch (cGoArt) {
    case 'e':
        return E;
    case 'f':
        return F;
    case 'h':
        return H;
    case 'u':
        return U;
    default:
        throw std::logic_error("no visits of this payer");
    }
}

const std::span<const SAbschnitt> FOLGE_ENDO = ENDO;
const std::span<const SAbschnitt> FOLGE_ZE_KASSE = ZE_KASSE;
const std::span<const SAbschnitt> FOLGE_ZE_PRIVAT = ZE_PRIVAT;
const std::span<const SAbschnitt> FOLGE_PAR = PAR;
const std::span<const SAbschnitt> FOLGE_PAR_PRIVAT = PAR_PRIVAT;
const std::span<const SAbschnitt> FOLGE_PAR_CHIRURGIE = PAR_CHIRURGIE;
const std::span<const SAbschnitt> FOLGE_UPT = UPT;
const std::span<const SAbschnitt> FOLGE_KFO = KFO;
const std::span<const SAbschnitt> FOLGE_KFO_PRIVAT = KFO_PRIVAT;
const std::span<const SAbschnitt> FOLGE_KBR = KBR;
const std::span<const SAbschnitt> FOLGE_IMPLANTAT = IMPLANTAT;
const SVorlage KFO_KONTROLLE{'c', 1, 15, KONTROLLE_KFO};

} // namespace orvostat
