#include "orvostatbs/host/Tabellen.h"

namespace orvostat {

namespace {

template <class... TFelder>
constexpr const STabelle * BESCHREIBUNGEN[] = {&SBeschreibung<TFelder>::tabelle...};

// A column that there is not, and more columns than the other table's key has parts, do not compile.
template <class TVon, class TNach> constexpr SVerweis Verweis(std::string_view sSpalten) {
    const SVerweis verweis{&SBeschreibung<TVon>::tabelle,
                           detail::MakeSchluessel(SBeschreibung<TVon>::aSpalten, sSpalten),
                           &SBeschreibung<TNach>::tabelle};
    if (verweis.spalten.iAnzahl > SBeschreibung<TNach>::aSchluessel[0].iAnzahl)
        throw std::invalid_argument("more columns than the key has");
    return verweis;
}

constexpr SVerweis VERWEISE[] = {
    Verweis<CTPraxis_Fields, CTKzv_Fields>("KZVNR"),
    Verweis<CTMandant_Fields, CTAdr_Fields>("MDADRNR"),
    Verweis<CTPersonal_Fields, CTAdr_Fields>("PERSADRNR"),
    Verweis<CTLeb_Fields, CTPersonal_Fields>("PID"),
    Verweis<CTLeb_Fields, CTMandant_Fields>("MDKASSE"),
    Verweis<CTLeb_Fields, CTMandant_Fields>("MDPRIVAT"),
    Verweis<CTOrvoKas_Fields, CTPwGroup_Fields>("KASSENPWGRP"),
    Verweis<CTPunktWert_Fields, CTPwGroup_Fields>("PWGRP"),
    Verweis<CTPat_Fields, CTAdr_Fields>("ADRNR"),
    Verweis<CTVDesc_Fields, CTPat_Fields>("PATNR"),
    Verweis<CTVDesc_Fields, CTOrvoKas_Fields>("KASKUERZEL"),
    Verweis<CTHistRecall_Fields, CTPat_Fields>("PATNR"),
    Verweis<CTABefund_Fields, CTPat_Fields>("PATNR"),
    Verweis<CTPlan_Fields, CTPat_Fields>("PATNR"),
    Verweis<CTBill_Fields, CTPat_Fields>("PATNR"),
    Verweis<CTBill_Fields, CTPlan_Fields>("PATNR PLANNR"),
    Verweis<CTBill_Fields, CTMandant_Fields>("PRAXISNR"),
    Verweis<CTBeh_Fields, CTPat_Fields>("PATNR"),
    Verweis<CTBeh_Fields, CTBill_Fields>("PATNR PATBILL"),
    Verweis<CTBeh_Fields, CTGO_Fields>("GOART LSTNR"),
    Verweis<CTBeh_Fields, CTLeb_Fields>("BEHANDLERNR"),
    Verweis<CTBeh_Fields, CTABefund_Fields>("PATNR LFDBEFENTRY"),
    Verweis<CTRoeBefund_Fields, CTPat_Fields>("PATNR"),
    Verweis<CTLBlock_Fields, CTPlan_Fields>("PATNR PLANNR"),
    Verweis<CTLBlockEntry_Fields, CTLBlock_Fields>("PATNR PLANNR LFDLBLOCK"),
    Verweis<CTGLBlocEntry_Fields, CTGLBloc_Fields>("LABORKUNDE LFDGLBLOC"),
    Verweis<CTRezept_Fields, CTPat_Fields>("PATNR"),
    Verweis<CHMVRecord_Fields, CTRezept_Fields>("PATNR REZEPTNR"),
    Verweis<CTGips_Fields, CTPat_Fields>("PATNR"),
};

} // namespace

std::span<const SVerweis> AlleVerweise() { return VERWEISE; }

std::span<const STabelle * const> AlleTabellen() {
    return BESCHREIBUNGEN<
        CTPraxis_Fields, CTKzv_Fields, CTMandant_Fields, CTAdr_Fields, CTPersonal_Fields, CTLeb_Fields,
        CTOrvoKas_Fields, CTPwGroup_Fields, CTPunktWert_Fields, CTParPool_Fields, CTSelectPool_Fields,
        CTGO_Fields, CTGoPunkte_Fields, CTGoCheck_Fields, CTGoBudget_Fields, CTPat_Fields, CTVDesc_Fields,
        CTHistRecall_Fields, CTABefund_Fields, CTPlan_Fields, CTBill_Fields, CTBeh_Fields, CTRoeBefund_Fields,
        CTLBlock_Fields, CTLBlockEntry_Fields, CTGLBloc_Fields, CTGLBlocEntry_Fields, CTGLKuFakt_Fields,
        CTFakt_Fields, CTKTraeger_Fields, CTRezept_Fields, CHMVRecord_Fields, CTGips_Fields, CTTbEntry_Fields,
        CTDatei_Fields>;
}

} // namespace orvostat
