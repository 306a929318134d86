-- A small logging database: one closed day and the beginning of the next, with the rows that the
-- module leaves. Read into the schema by the tests of the show command.
INSERT INTO dados_usuario VALUES (1, 'Rua das Flores, 100, Centro, São Paulo', 'Mercearia Bom Preço', 'Bom Preço Comércio de Alimentos Ltda', '12345678000195', '110.042.490.114', '1234567', 'SP', '2024-03-01 08:00:00', 1, 0);
INSERT INTO dados_ecf VALUES (1, 'BN0000000000000000001', 'BANCADA', 'REF-1', 'ECF-IF', 3);
INSERT INTO versao_sb VALUES (1, '01.00.00');
INSERT INTO meio_pagamento VALUES (1, 1, 'Dinheiro', 'N');
INSERT INTO meio_pagamento VALUES (2, 1, 'Cartão de crédito', 'S');
INSERT INTO meio_pagamento VALUES (3, 1, 'Cheque', 'N');
INSERT INTO totalizador_nao_fiscal VALUES (3, 'Recarga de celular');

-- 000101: the float.
INSERT INTO cupom_nf VALUES (101, 1, 1, 1, '2024-03-15 08:00:05', 100, 100, 'V', 0, 'V', 0, 0, 'N', '', '', 0, 0);
INSERT INTO item_cupom_nf (seq_item, cont_coo, indice_totalizador_nf, valor_total, valor_total_liquido, valor_acrescimo, valor_desconto, valor_canc_acrescimo, id_cancelado) VALUES (1, 101, 1, 100.00, 100.00, 0, 0, 0, 'N');
INSERT INTO outros_documentos VALUES (101, 1, 1, 0, 0, 1, '2024-03-15 08:00:05', '2024-03-15 08:00:05', 'CN');

-- 000102: adjustments of items, a cancelled item, a percentage on the subtotal whose type stays V.
INSERT INTO cupom_fiscal VALUES (102, 51, 1, '2024-03-15 09:12:44', '12345678909', 'José da Conceição', 'Av. Brasil, 1,', 'kX9mVb0cQ1nq6fYJ2yZk0r1mQ8yT5u7wA3sD4fG5hJ0=', 30.86, 29.32, 'V', 1.54, 'V', 0, 0, 0.68, 'CNPJ/CPF consumidor: 123.456.789-09
Obrigado pela preferência, volte sempre!', 'N', 'N', 0, 5, 'PDV Exemplo 2.1', ' ');
INSERT INTO item_cupom_fiscal VALUES (1, 102, '7891000315507', 'Leite integral longa vida 1 litro', 2, '01T18.00', 'UN', 4.99, 'V', 0, 'P', 1.05, 0, 8.93, 0, 2, 'T', 'N', 0, 10.5);
INSERT INTO item_cupom_fiscal VALUES (2, 102, '2000001', 'Maçã gala', 1.235, '02T07.00', 'kg', 9.9, 'V', 0.5, 'V', 0, 0, 12.72, 3, 2, 'T', 'N', 0, 0);
INSERT INTO item_cupom_fiscal VALUES (3, 102, '555', 'Pilha', 1, 'F1', 'UN', 7.5, 'V', 0, 'V', 0, 0, 7.5, 0, 2, 'T', 'S', 0, 0);
INSERT INTO item_cupom_fiscal VALUES (4, 102, '556', 'Gás de cozinha', 2, 'N1', 'UN', 4.605, 'V', 0, 'V', 0, 1, 9.21, 0, 3, 'T', 'N', 0, 0);
INSERT INTO pagamento_cupom VALUES (102, 1, 30, 1, '', 1, 'N', 0);

-- 000103: cancelled while it was issued.
INSERT INTO cupom_fiscal VALUES (103, 52, 1, '2024-03-15 09:40:00', '', '', ',', ' ', 0, 0, 'V', 0, 'V', 0, 0, 0, ' ', 'S', 'N', 0, 0, ' ', ' ');
INSERT INTO item_cupom_fiscal VALUES (1, 103, '1', 'Pão', 10, '01T18.00', 'UN', 0.8, 'V', 0, 'V', 0, 0, 8, 0, 2, 'T', 'N', 0, 0);

-- 000104: an additional receipt, whose closing the engine rejects.
INSERT INTO cupom_fiscal VALUES (104, 53, 1, '2024-03-15 11:05:10', '', '', ',', ' ', 0, 0, 'V', 0, 'V', 0, 0, 0, ' ', 'N', 'N', 0, 0, ' ', ' ');
INSERT INTO item_cupom_fiscal VALUES (1, 104, '77', 'Queijo', 1, '01T18.00', 'UN', 32.1, 'V', 0, 'V', 0, 0, 32.1, 0, 2, 'T', 'N', 0, 0);
INSERT INTO pagamento_cupom VALUES (104, 1, 32.1, 1, '', 1, 'N', 0);

-- 000105: apportioned, paid by card in three parts, and moved to a cheque.
INSERT INTO cupom_fiscal VALUES (105, 54, 1, '2024-03-15 17:30:00', '12345678000195', 'Padaria & Cia', 'Rua "B",', 'c2lnbmF0dXJlIG9mIHRoZSBkb2N1bWVudCAxMDUgLi4uLi4=', 1250, 1240, 'V', 10, 'V', 0, 0, 0, 'Volte sempre', 'N', 'N', 0, 0, 'PDV Exemplo 2.1', 'CHAVE-105');
INSERT INTO item_cupom_fiscal VALUES (1, 105, '900', 'Forno elétrico', 1, '01T18.00', 'UN', 1000, 'V', 0, 'V', 8, 0, 992, 0, 2, 'A', 'N', 0, 0);
INSERT INTO item_cupom_fiscal VALUES (2, 105, '901', 'Instalação', 1, '03S05.00', 'SV', 250, 'V', 0, 'V', 2, 0, 248, 0, 2, 'A', 'N', 0, 0);
INSERT INTO pagamento_cupom VALUES (105, 1, 1240, 3, 'NSU 004512', 2, 'S', 240);
INSERT INTO pagamento_cupom VALUES (105, 1, 240, 1, 'banco 001', 3, 'N', 0);
-- 000106: its voucher. 000107: a report.
INSERT INTO outros_documentos VALUES (106, 1, 2, 0, 1, 1, '2024-03-15 17:31:00', '2024-03-15 17:31:20', 'CC');
INSERT INTO outros_documentos VALUES (107, 1, 3, 1, 1, 1, '2024-03-15 18:00:00', '2024-03-15 18:02:00', 'RG');

-- 000108: a non-fiscal receipt, cancelled by 000109. 000110: a withdrawal.
INSERT INTO cupom_nf VALUES (108, 1, 4, 1, '2024-03-15 18:10:00', 20, 19, 'V', 0, 'V', 1, 0, 'S', 'Ana Lúcia', '98765432100', 0, 5);
INSERT INTO item_cupom_nf VALUES (1, 108, 3, 20, 20, 'V', 0, 'V', 0, 0, 'N', 0, 0);
INSERT INTO pagamento_cupom VALUES (108, 4, 19, 1, '', 1, 'N', 0);
INSERT INTO outros_documentos VALUES (108, 1, 4, 1, 1, 1, '2024-03-15 18:10:00', '2024-03-15 18:11:00', 'CN');
INSERT INTO outros_documentos VALUES (109, 1, 5, 1, 1, 1, '2024-03-15 18:15:00', '2024-03-15 18:15:00', 'NC');
INSERT INTO cupom_nf VALUES (110, 1, 6, 1, '2024-03-15 21:00:00', 50, 50, 'V', 0, 'V', 0, 0, 'N', '', '', 0, 0);
INSERT INTO item_cupom_nf (seq_item, cont_coo, indice_totalizador_nf, valor_total, valor_total_liquido, valor_acrescimo, valor_desconto, valor_canc_acrescimo, id_cancelado) VALUES (1, 110, 2, 50, 50, 0, 0, 0, 'N');
INSERT INTO outros_documentos VALUES (110, 1, 6, 1, 1, 1, '2024-03-15 21:00:00', '2024-03-15 21:00:00', 'CN');

-- 000111: the Z reduction.
INSERT INTO reducao_z VALUES (1, 1, '2024-03-15 22:10:03', '2024-03-15 00:00:00', 111, 6, 1, 1330.96, 1330.96, 1052.75, 188.9, 10.59, 0.5, 15.5, 248, 12.4, 2, 0, 0, 1834, 50998);
INSERT INTO totalizador_reducao (cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES (1, '01T18.00', 1033.03, 'S', 185.94);
INSERT INTO totalizador_reducao (cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES (1, '02T07.00', 12.72, 'S', 0.89);
INSERT INTO totalizador_reducao (cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES (1, '03S05.00', 248, 'S', 12.4);
INSERT INTO totalizador_reducao (cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES (1, 'F1', 0, 'S', 0);
INSERT INTO totalizador_reducao (cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES (1, 'N1', 9.21, 'S', 0);
INSERT INTO totalizador_reducao (cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES (1, 'DT', 10.59, 'S', 0);
INSERT INTO totalizador_reducao (cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES (1, 'DS', 2, 'S', 0);
INSERT INTO totalizador_reducao (cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES (1, 'AT', 0.5, 'S', 0);
INSERT INTO totalizador_reducao (cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES (1, 'AS', 0, 'S', 0);
INSERT INTO totalizador_reducao (cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES (1, 'Can-T', 15.5, 'S', 0);
INSERT INTO totalizador_reducao (cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES (1, 'Can-S', 0, 'S', 0);
INSERT INTO totalizador_reducao (cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES (1, 'FUNDO DE TROCO', 100, 'N', 0);
INSERT INTO totalizador_reducao (cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES (1, 'SANGRIA', 50, 'N', 0);
INSERT INTO meio_pagamento_reducao VALUES (1, 1, 'Dinheiro', 62.1);
INSERT INTO meio_pagamento_reducao VALUES (2, 1, 'Cartão de crédito', 1000);
INSERT INTO meio_pagamento_reducao VALUES (3, 1, 'Cheque', 240);
INSERT INTO meio_pagamento_reducao VALUES (21, 1, 'TROCO', 0.68);
INSERT INTO outros_documentos VALUES (111, 1, 6, 1, 1, 1, '2024-03-15 22:10:03', '2024-03-15 22:10:03', 'RZ');

-- The next day: 000112 an X reading, filed under the reduction made; 000113 a receipt full of HTML.
INSERT INTO outros_documentos VALUES (112, 1, 6, 1, 1, 1, '2024-03-16 07:58:00', '2024-03-16 07:58:00', 'LX');
INSERT INTO cupom_fiscal VALUES (113, 55, 2, '2024-03-16 08:20:30', '', '</pre><script>document.title="taken"</script>', '<img src=x onerror="document.title=1">,', 'YWJj', 5, 5, 'V', 0, 'V', 0, 0, 0, '<b>oferta</b> & "mais"', 'N', 'N', 0, 0, '</script><script>document.title="taken"</script>', ' ');
INSERT INTO item_cupom_fiscal VALUES (1, 113, '<i>1</i>', '<script>document.title="taken"</script>', 1, '01T18.00', 'UN', 5, 'V', 0, 'V', 0, 0, 5, 0, 2, 'T', 'N', 0, 0);
INSERT INTO pagamento_cupom VALUES (113, 6, 5, 1, '<u>', 1, 'N', 0);
