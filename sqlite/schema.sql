-- The logging database of one register.
--
-- Counters, indexes and sequence numbers have integer affinity, so that a number compares the same
-- with and without quotes; money, quantities and percentages have numeric affinity. Every column by
-- which the module finds rows again is indexed, without a unique key where a document number can
-- come twice: the counters wrap, and a lost row is worse than a double one. Nothing is constrained:
-- what happened on the register is recorded whether or not it looks right.

-- Documents other than fiscal receipts: readings, reports, vouchers, non-fiscal receipts,
-- cancellations, Z reductions.
CREATE TABLE outros_documentos (
  cont_coo INTEGER,
  num_ecf INTEGER,
  cont_gnf INTEGER,
  cont_grg INTEGER,
  cont_cdc INTEGER,
  cont_crz INTEGER,
  data_hora_inicio_emissao TEXT,
  data_hora_fim_emissao TEXT,
  id_tipo_documento TEXT
);
CREATE INDEX idx_outros_documentos ON outros_documentos (cont_coo);

-- Fiscal receipts.
CREATE TABLE cupom_fiscal (
  cont_coo INTEGER,
  cont_ccf INTEGER,
  cont_crz INTEGER,
  data_hora_emissao TEXT,
  cpf_cnpj_consumidor TEXT,
  nome_consumidor TEXT,
  endereco_consumidor TEXT,
  assinatura_documento TEXT,
  valor_subtotal NUMERIC,
  valor_total NUMERIC,
  tipo_desconto TEXT,
  valor_desconto NUMERIC,
  tipo_acrescimo TEXT,
  valor_acrescimo NUMERIC,
  valor_canc_acrescimo NUMERIC,
  valor_troco NUMERIC,
  texto_suplementar TEXT,
  id_cancelado TEXT,
  id_cupom_adicional TEXT,
  perc_acrescimo NUMERIC,
  perc_desconto NUMERIC,
  texto_complementar TEXT,
  chave_cupom TEXT
);
CREATE INDEX idx_cupom_fiscal ON cupom_fiscal (cont_coo);

-- Items of fiscal receipts.
CREATE TABLE item_cupom_fiscal (
  seq_item INTEGER,
  cont_coo INTEGER,
  cod_item TEXT,
  descricao TEXT,
  quantidade NUMERIC,
  aliquota TEXT,
  un_medida TEXT,
  valor_unitario NUMERIC,
  tipo_acrescimo TEXT,
  valor_acrescimo NUMERIC,
  tipo_desconto TEXT,
  valor_desconto NUMERIC,
  valor_canc_acrescimo NUMERIC,
  valor_total NUMERIC,
  casas_decimais_quantidade INTEGER,
  casas_decimais_valor INTEGER,
  id_arred_trunc_valor TEXT,
  id_cancelado TEXT,
  perc_acrescimo NUMERIC,
  perc_desconto NUMERIC
);
CREATE INDEX idx_item_cupom_fiscal ON item_cupom_fiscal (cont_coo, seq_item);

-- Payments of receipts of either kind.
CREATE TABLE pagamento_cupom (
  cont_coo INTEGER,
  cont_gnf INTEGER,
  valor_pagamento NUMERIC,
  num_parcelas INTEGER,
  info_adicional TEXT,
  indice_meio_pagamento INTEGER,
  id_estornado TEXT,
  valor_estornado NUMERIC
);
CREATE INDEX idx_pagamento_cupom ON pagamento_cupom (cont_coo, indice_meio_pagamento);

-- Non-fiscal receipts, withdrawals and floats included.
CREATE TABLE cupom_nf (
  cont_coo INTEGER,
  cont_crz INTEGER,
  cont_gnf INTEGER,
  num_ecf INTEGER,
  data_hora_emissao TEXT,
  valor_subtotal NUMERIC,
  valor_total_cupom NUMERIC,
  tipo_acrescimo TEXT,
  valor_acrescimo NUMERIC,
  tipo_desconto TEXT,
  valor_desconto NUMERIC,
  valor_canc_acrescimo NUMERIC,
  id_cancelado TEXT,
  nome_consumidor TEXT,
  cpf_cnpj_consumidor TEXT,
  perc_acrescimo NUMERIC,
  perc_desconto NUMERIC
);
CREATE INDEX idx_cupom_nf ON cupom_nf (cont_coo);

-- Items of non-fiscal receipts. The insert does not name the percentages; the adjustments of an
-- item write them.
CREATE TABLE item_cupom_nf (
  seq_item INTEGER,
  cont_coo INTEGER,
  indice_totalizador_nf INTEGER,
  valor_total NUMERIC,
  valor_total_liquido NUMERIC,
  tipo_acrescimo TEXT,
  valor_acrescimo NUMERIC,
  tipo_desconto TEXT,
  valor_desconto NUMERIC,
  valor_canc_acrescimo NUMERIC,
  id_cancelado TEXT,
  perc_acrescimo NUMERIC DEFAULT 0,
  perc_desconto NUMERIC DEFAULT 0
);
CREATE INDEX idx_item_cupom_nf ON item_cupom_nf (cont_coo, seq_item);

-- Z reductions.
CREATE TABLE reducao_z (
  cont_crz INTEGER,
  num_ecf INTEGER,
  data_hora_emissao TEXT,
  data_movimento TEXT,
  cont_coo INTEGER,
  cont_gnf INTEGER,
  cont_cro INTEGER,
  valor_gt NUMERIC,
  valor_vb NUMERIC,
  valor_base_icms NUMERIC,
  valor_icms NUMERIC,
  valor_desc_icms NUMERIC,
  valor_acres_icms NUMERIC,
  valor_canc_icms NUMERIC,
  valor_base_iss NUMERIC,
  valor_iss NUMERIC,
  valor_desc_iss NUMERIC,
  valor_acres_iss NUMERIC,
  valor_canc_iss NUMERIC,
  tempo_operacional INTEGER,
  tempo_emitindo_doc INTEGER
);

-- Totalizers of Z reductions.
CREATE TABLE totalizador_reducao (
  cont_crz INTEGER,
  totalizador TEXT,
  valor_base_calculo NUMERIC,
  id_fiscal TEXT,
  valor_imposto NUMERIC
);

-- Payment means of Z reductions, and the change.
CREATE TABLE meio_pagamento_reducao (
  indice_meio_pagamento INTEGER,
  cont_crz INTEGER,
  descricao_meio_pagamento TEXT,
  valor_acumulado NUMERIC
);

-- Technical interventions.
CREATE TABLE intervencao (
  cont_cro INTEGER,
  num_ecf INTEGER,
  data_hora_intervencao TEXT,
  id_tipo_intervencao TEXT,
  id_perda_dados_mt TEXT
);
CREATE INDEX idx_intervencao ON intervencao (cont_cro);

-- Reprints from the detail tape.
CREATE TABLE fita_detalhe (
  cont_cfd INTEGER,
  num_ecf INTEGER,
  data_hora_emissao TEXT,
  coo_inicial INTEGER,
  coo_final INTEGER
);
CREATE INDEX idx_fita_detalhe ON fita_detalhe (cont_cfd);

-- Programmed payment means.
CREATE TABLE meio_pagamento (
  num_indice INTEGER,
  num_ecf INTEGER,
  descricao TEXT,
  id_vinculacao_ccd TEXT
);
CREATE INDEX idx_meio_pagamento ON meio_pagamento (num_indice);

-- Programmed non-fiscal totalizers.
CREATE TABLE totalizador_nao_fiscal (
  num_indice INTEGER,
  descricao TEXT
);
CREATE INDEX idx_totalizador_nao_fiscal ON totalizador_nao_fiscal (num_indice);

-- The owner of the register.
CREATE TABLE dados_usuario (
  seq_usuario INTEGER,
  endereco TEXT,
  nome_fantasia TEXT,
  razao_social TEXT,
  cnpj TEXT,
  ie TEXT,
  im TEXT,
  uf TEXT,
  data_hora_gravacao TEXT,
  cont_cro INTEGER,
  valor_gt NUMERIC
);
CREATE INDEX idx_dados_usuario ON dados_usuario (seq_usuario);

-- Currency symbols.
CREATE TABLE moeda (
  num_ecf INTEGER,
  data_hora_gravacao TEXT,
  simbolo_moeda TEXT
);

-- The register's identity. num_ecf is the key, so that the first row gets the 1 that its insert
-- does not name.
CREATE TABLE dados_ecf (
  num_ecf INTEGER PRIMARY KEY,
  num_serie TEXT,
  marca TEXT,
  modelo TEXT,
  tipo TEXT,
  num_caixa INTEGER
);

-- Versions of the basic software.
CREATE TABLE versao_sb (
  num_ecf INTEGER,
  versao TEXT
);
