#pragma once
// The ageing of owing invoices that the Debtors report and export bring up to date.

// The column of BALANCE1 to BALANCE3 that takes an invoice's balance at an age in
// days, or 0 for none. The report and the export have their own boundaries.
int reportAgeing(int days);
int exportAgeing(int days);
// Writes the ageing columns of every invoice with a balance above 0, by the rule, where
// they change; gives the number of invoices written.
int Age_invoices(int (*rule)(int days));
